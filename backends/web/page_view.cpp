// What the engine tells of a page is told on only once: when it is there. The engine says
// "finished" also after failures, with the address of before, and after what was cancelled or
// handed over; so a page counts only from its commit on, until something fails.
//
// Answers wait for the application: the engine's question is kept, and answered from the loop. The
// answer that is handed over becomes a download of the same response, with its cookies and its
// POST, and is asked for by nobody else: any other download is cancelled at once.
#include "backends/web/page_view.h"

#include <utility>

#include "backends/web/failure_page.h"
#include "backends/web/refusals.h"
#include "backends/web/snapshot.h"

namespace Osp::Web {

namespace {

using Text = Base::Owner<char, g_free>;

constexpr const char* kCannotBeShown = "This page cannot be shown";
constexpr unsigned kFirstFailingStatus = 400;
constexpr double kZoomOfLevel = 2;

WebKitNetworkSession* MakeSession() {
    WebKitNetworkSession* const session = webkit_network_session_new_ephemeral();
    webkit_network_session_set_proxy_settings(session, WEBKIT_NETWORK_PROXY_MODE_NO_PROXY, nullptr);
    return session;
}

WebKitWebView* MakeWidget(WebKitWebContext* context, WebKitNetworkSession* session) {
    auto* const view = WEBKIT_WEB_VIEW(g_object_new(WEBKIT_TYPE_WEB_VIEW, "web-context", context,
                                                    "network-session", session, nullptr));
    return WEBKIT_WEB_VIEW(g_object_ref_sink(view));
}

/// Not failures of a page: it was given up, or handed over.
bool IsOnPurpose(const GError* error) {
    return g_error_matches(error, WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_CANCELLED) ||
           g_error_matches(error, WEBKIT_POLICY_ERROR,
                           WEBKIT_POLICY_ERROR_FRAME_LOAD_INTERRUPTED_BY_POLICY_CHANGE);
}

const char* UrlOf(WebKitNavigationAction* action) {
    return webkit_uri_request_get_uri(webkit_navigation_action_get_request(action));
}

}  // namespace

/// The engine's question, kept until it is answered.
class PageView::Decision : public AnswerDecision {
  public:
    Decision(WebKitPolicyDecision* decision, std::weak_ptr<PageView*> view)
        : decision_(static_cast<WebKitPolicyDecision*>(g_object_ref(decision))),
          view_(std::move(view)) {}
    ~Decision() override {
        // The engine would take silence for leave.
        if (!isMade_) webkit_policy_decision_ignore(decision_.get());
    }

    void Make(Controls::DecisionPolicy policy) override {
        const auto view = view_.lock();
        if (!view) return;
        isMade_ = true;
        if (policy == Controls::DecisionPolicy::kDownload) {
            (*view)->awaitsDownload_ = true;
            return webkit_policy_decision_download(decision_.get());
        }
        // Only what was given may have had to do without its scripts.
        WebKitSettings* const settings = webkit_web_view_get_settings((*view)->view_.get());
        webkit_settings_set_enable_javascript_markup(settings, TRUE);
        webkit_policy_decision_use(decision_.get());
    }

  private:
    Base::Owner<WebKitPolicyDecision, g_object_unref> decision_;
    std::weak_ptr<PageView*> view_;
    bool isMade_ = false;
};

PageView::PageView(Ui::Window& window, WebKitWebContext* context, const Authorities& authorities,
                   WebViewClient& client)
    : window_(window),
      authorities_(authorities),
      client_(client),
      session_(MakeSession()),
      view_(MakeWidget(context, session_.get())),
      history_(view_.get()),
      fields_(
          webkit_web_view_get_user_content_manager(view_.get()),
          [this](bool isByTouch) { client_.OnFieldEntered(isByTouch); },
          [this] { client_.OnFieldLeft(); }) {
    RefuseAllElse(view_.get());
    // As the window itself, where no GPU is.
    if (g_strcmp0(g_getenv("GSK_RENDERER"), "cairo") == 0) {
        webkit_settings_set_hardware_acceleration_policy(webkit_web_view_get_settings(view_.get()),
                                                         WEBKIT_HARDWARE_ACCELERATION_POLICY_NEVER);
    }
    ConnectLoading();
    ConnectSession();
    window_.AddWidget(GTK_WIDGET(view_.get()), [this](double scale) {
        scale_ = scale;
        UpdateZoom();
    });
}

PageView::~PageView() {
    self_.reset();
    g_signal_handlers_disconnect_by_data(view_.get(), this);
    g_signal_handlers_disconnect_by_data(session_.get(), this);
    webkit_web_view_stop_loading(view_.get());
    window_.RemoveWidget(GTK_WIDGET(view_.get()));
}

void PageView::ConnectSession() {
    g_signal_connect(session_.get(), "download-started",
                     G_CALLBACK(+[](WebKitNetworkSession*, WebKitDownload* d, gpointer self) {
                         static_cast<PageView*>(self)->OnDownload(d);
                     }),
                     this);
}

void PageView::ConnectLoading() {
    const auto connect = [this](const char* signal, GCallback callback) {
        g_signal_connect(view_.get(), signal, callback, this);
    };
    connect("decide-policy",
            G_CALLBACK(+[](WebKitWebView*, WebKitPolicyDecision* decision,
                           WebKitPolicyDecisionType type, PageView* self) -> gboolean {
                if (type == WEBKIT_POLICY_DECISION_TYPE_RESPONSE) {
                    return self->OnResponse(WEBKIT_RESPONSE_POLICY_DECISION(decision));
                }
                WebKitNavigationAction* const action =
                    webkit_navigation_policy_decision_get_navigation_action(
                        WEBKIT_NAVIGATION_POLICY_DECISION(decision));
                return type == WEBKIT_POLICY_DECISION_TYPE_NEW_WINDOW_ACTION
                           ? self->OnNewWindow(decision, action)
                           : self->OnNavigation(decision, action);
            }));
    connect("load-changed", G_CALLBACK(+[](WebKitWebView*, WebKitLoadEvent event, PageView* self) {
                self->OnLoadChanged(event);
            }));
    connect("load-failed", G_CALLBACK(+[](WebKitWebView*, WebKitLoadEvent, const char* url,
                                          const GError* error, PageView* self) -> gboolean {
                self->OnLoadFailed(url, error);
                return TRUE;
            }));
    connect("load-failed-with-tls-errors",
            G_CALLBACK(+[](WebKitWebView*, const char* url, GTlsCertificate* certificate,
                           GTlsCertificateFlags, PageView* self) -> gboolean {
                self->OnUnsafe(url, certificate);
                return TRUE;
            }));
    connect("web-process-terminated",
            G_CALLBACK(+[](WebKitWebView*, WebKitWebProcessTerminationReason, PageView* self) {
                self->OnProcessEnded();
            }));
}

void PageView::BeginLoad() {
    awaitsStart_ = true;
    isThere_ = false;
    awaitsOwn_ = false;
    awaitsDownload_ = false;
    isOwn_ = false;
    showsFailure_ = false;
    intake_.reset();
}

void PageView::LoadUrl(const std::string& url) {
    BeginLoad();
    history_.BeginWithUrl();
    webkit_web_view_load_uri(view_.get(), url.c_str());
}

void PageView::LoadData(PageData data) {
    ShowData(data);
    history_.BeginWithData(std::move(data));
}

void PageView::ShowData(const PageData& data) {
    BeginLoad();
    isOwn_ = true;
    awaitsOwn_ = true;
    webkit_settings_set_enable_javascript_markup(webkit_web_view_get_settings(view_.get()),
                                                 data.runsScripts);
    GBytes* const bytes = g_bytes_new(data.content.data(), data.content.size());
    webkit_web_view_load_bytes(view_.get(), bytes, data.mimeType.c_str(), data.encoding.c_str(),
                               data.baseUrl.c_str());
    g_bytes_unref(bytes);
}

std::string PageView::GetUrl() const {
    const char* const url = webkit_web_view_get_uri(view_.get());
    return url == nullptr ? "" : url;
}

void PageView::GoBack() {
    if (std::optional<PageData> data = history_.GoBack()) {
        LoadData(std::move(*data));
    } else {
        BeginLoad();
    }
}

void PageView::SetZoomLevel(double level) {
    level_ = level;
    UpdateZoom();
}

void PageView::UpdateZoom() {
    if (scale_ > 0) webkit_web_view_set_zoom_level(view_.get(), kZoomOfLevel * level_ * scale_);
}

void PageView::Place(const Graphics::Rectangle& place) {
    place_ = place;
    window_.PlaceWidget(GTK_WIDGET(view_.get()), place);
}

void PageView::TakePicture(std::function<void(std::shared_ptr<Graphics::Surface>)> taken) {
    TakeSnapshot(view_.get(), place_.Size(), std::move(taken));
}

void PageView::Insert(const Base::String& text) {
    std::string rest = text.ToUtf8();
    for (;;) {
        const std::size_t end = rest.find('\n');
        const std::string line = rest.substr(0, end);
        if (!line.empty()) {
            webkit_web_view_execute_editing_command_with_argument(view_.get(), "InsertText",
                                                                  line.c_str());
        }
        if (end == std::string::npos) return;
        FieldWatch::PressEnter(view_.get());
        rest.erase(0, end + 1);
    }
}

void PageView::Delete(Ui::TextEditor::Step step) {
    using Step = Ui::TextEditor::Step;
    const char* command = "DeleteBackward";
    if (step == Step::kCharacterAfter) command = "DeleteForward";
    if (step == Step::kWordBefore) command = "DeleteWordBackward";
    if (step == Step::kWordAfter) command = "DeleteWordForward";
    webkit_web_view_execute_editing_command(view_.get(), command);
}

bool PageView::OnNavigation(WebKitPolicyDecision* decision, WebKitNavigationAction* action) {
    const std::string url = UrlOf(action);
    if (std::exchange(awaitsOwn_, false)) return false;
    const bool isBlank = url == "about:blank" || url == "about:srcdoc";
    if (IsOfTheWeb(url.c_str()) || isBlank) return false;
    webkit_policy_decision_ignore(decision);
    return true;
}

// What wants a window of its own gets this one.
bool PageView::OnNewWindow(WebKitPolicyDecision* decision, WebKitNavigationAction* action) {
    webkit_policy_decision_ignore(decision);
    if (IsOfTheWeb(UrlOf(action))) {
        webkit_web_view_load_request(view_.get(), webkit_navigation_action_get_request(action));
    }
    return true;
}

bool PageView::OnResponse(WebKitResponsePolicyDecision* decision) {
    if (!webkit_response_policy_decision_is_main_frame_main_resource(decision)) return false;
    WebKitURIResponse* const response = webkit_response_policy_decision_get_response(decision);
    const std::string url = webkit_uri_response_get_uri(response);
    if (!IsOfTheWeb(url.c_str())) return false;
    auto asked = std::make_shared<Decision>(WEBKIT_POLICY_DECISION(decision), self_);
    // What cannot be shown must not become a download either.
    if (!webkit_response_policy_decision_is_mime_type_supported(decision)) {
        asked.reset();
        ShowFailure(url, kCannotBeShown, "This device cannot show such files.", false);
    } else if (webkit_uri_response_get_status_code(response) >= kFirstFailingStatus) {
        asked->Make(Controls::DecisionPolicy::kRender);
    } else {
        client_.OnAnswer(url, std::move(asked));
    }
    return true;
}

void PageView::OnLoadChanged(WebKitLoadEvent event) {
    if (event == WEBKIT_LOAD_STARTED) {
        awaitsStart_ = false;
        isThere_ = false;
    }
    if (awaitsStart_) return;
    if (event == WEBKIT_LOAD_COMMITTED) {
        isThere_ = true;
        fields_.Forget();
        const bool isFetched = !std::exchange(isOwn_, false);
        // The engine shows an empty page instead of what it will not even try to fetch.
        if (isFetched) isThere_ = IsOfTheWeb(GetUrl().c_str());
        if (isFetched && isThere_) {
            showsFailure_ = false;
            history_.PageCommitted();
        }
    }
    if (event == WEBKIT_LOAD_FINISHED && std::exchange(isThere_, false) && !showsFailure_) {
        client_.OnPageFinished();
    }
}

void PageView::OnLoadFailed(const char* url, const GError* error) {
    if (IsOnPurpose(error)) return;
    ShowFailure(url, kCannotBeShown, HostOf(url) + ": " + error->message + ".", true);
}

void PageView::OnUnsafe(const std::string& url, GTlsCertificate* certificate) {
    isThere_ = false;
    const std::string host = HostOf(url);
    if (!authorities_.Vouches(certificate, host)) {
        return ShowFailure(url, "The connection to " + host + " is not safe.",
                           "Nobody who is trusted vouches for this host.", true);
    }
    webkit_network_session_allow_tls_certificate_for_host(session_.get(), certificate,
                                                          host.c_str());
    webkit_web_view_load_uri(view_.get(), url.c_str());
}

void PageView::OnProcessEnded() {
    fields_.Forget();
    ShowFailure(GetUrl(), kCannotBeShown, "It has ended unexpectedly.", true);
}

void PageView::ShowFailure(const std::string& url, const std::string& title,
                           const std::string& reason, bool canTryAgain) {
    isOwn_ = true;
    isThere_ = false;
    showsFailure_ = true;
    const std::string page =
        FailurePage(title, reason, canTryAgain && IsOfTheWeb(url.c_str()) ? url : "");
    webkit_web_view_load_alternate_html(view_.get(), page.c_str(), url.c_str(), nullptr);
}

void PageView::OnDownload(WebKitDownload* download) {
    if (!std::exchange(awaitsDownload_, false)) return webkit_download_cancel(download);
    const std::string url = webkit_uri_request_get_uri(webkit_download_get_request(download));
    intake_ = std::make_unique<AnswerIntake>(
        download, [this](Bytes chunk) { client_.OnChunk(std::move(chunk)); },
        [this, url](const std::string& whyNot) {
            if (!whyNot.empty()) {
                ShowFailure(url, kCannotBeShown, HostOf(url) + ": " + whyNot + ".", true);
            }
            intake_.reset();
        });
}

}  // namespace Osp::Web
