// What the engine tells of a page is told on only once: when it is there. The engine says
// "finished" also after failures, with the address of before, and after what was cancelled or
// handed over; so a page counts only from its commit on, until something fails.
//
// Answers wait for the application: the engine's question is kept, and answered from the loop. The
// answer that is handed over becomes a download of the same response, with its cookies and its
// POST, and is asked for by nobody else: any other download is cancelled at once.
#include <algorithm>
#include <utility>

#include "backends/web/failure_page.h"
#include "backends/web/page_view.h"
#include "backends/web/refusals.h"

namespace Osp::Web {

namespace {

constexpr int kMostTries = 3;
constexpr const char* kCannotBeShown = "This page cannot be shown";
constexpr unsigned kFirstFailingStatus = 400;
constexpr unsigned kStatusesWithoutAPage[] = {204, 205};

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
    ownUrl_.clear();
    triesLeft_ = kMostTries;
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
    ownUrl_ = data.baseUrl;
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

bool PageView::OnNavigation(WebKitPolicyDecision* decision, WebKitNavigationAction* action) {
    const std::string url = UrlOf(action);
    if (url == ownUrl_) return false;
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
    const unsigned status = webkit_uri_response_get_status_code(response);
    const bool hasPage = std::ranges::count(kStatusesWithoutAPage, status) == 0;
    if (!hasPage || !IsOfTheWeb(url.c_str())) return false;
    auto asked = std::make_shared<Decision>(WEBKIT_POLICY_DECISION(decision), self_);
    // What cannot be shown must not become a download either.
    if (!webkit_response_policy_decision_is_mime_type_supported(decision)) {
        asked.reset();
        ShowFailure(url, kCannotBeShown, "This device cannot show such files.", false);
    } else if (status >= kFirstFailingStatus) {
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
    // A certificate that has to be looked at may pass for a load that was cancelled: asking again
    // tells. What is given up on purpose has another error.
    const bool isCancelled = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED);
    if (isCancelled && triesLeft_-- > 0) return webkit_web_view_load_uri(view_.get(), url);
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
