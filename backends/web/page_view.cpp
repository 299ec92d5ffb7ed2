#include "backends/web/page_view.h"

#include <utility>

#include "backends/web/refusals.h"
#include "backends/web/snapshot.h"

namespace Osp::Web {

namespace {

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

}  // namespace

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
    if (place_.IsEmpty()) return taken(nullptr);
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

}  // namespace Osp::Web
