// A view of the engine in the window.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <webkit/webkit.h>

#include "backends/web/answer_intake.h"
#include "backends/web/authorities.h"
#include "backends/web/field_watch.h"
#include "backends/web/page_history.h"
#include "backends/window/window.h"
#include "osp/base/owner.h"
#include "osp/web/web_engine.h"

namespace Osp::Web {

class PageView : public WebView {
  public:
    /// None is owned; all outlive the view.
    PageView(Ui::Window& window, WebKitWebContext* context, const Authorities& authorities,
             WebViewClient& client);
    ~PageView() override;
    PageView(const PageView&) = delete;
    PageView& operator=(const PageView&) = delete;

    void LoadUrl(const std::string& url) override;
    void LoadData(PageData data) override;
    std::string GetUrl() const override;
    bool CanGoBack() const override { return history_.CanGoBack(); }
    void GoBack() override;
    void SetZoomLevel(double level) override;
    void TakePicture(std::function<void(std::shared_ptr<Graphics::Surface>)> taken) override;

    void Place(const Graphics::Rectangle& place) override;
    void Insert(const Base::String& text) override;
    void Delete(Ui::TextEditor::Step step) override;

  private:
    class Decision;

    void ConnectLoading();
    void ConnectSession();
    void BeginLoad();
    void ShowData(const PageData& data);
    void ShowFailure(const std::string& url, const std::string& title, const std::string& reason,
                     bool canTryAgain);
    void UpdateZoom();

    bool OnNavigation(WebKitPolicyDecision* decision, WebKitNavigationAction* action);
    bool OnNewWindow(WebKitPolicyDecision* decision, WebKitNavigationAction* action);
    bool OnResponse(WebKitResponsePolicyDecision* decision);
    void OnLoadChanged(WebKitLoadEvent event);
    void OnLoadFailed(const char* url, const GError* error);
    void OnUnsafe(const std::string& url, GTlsCertificate* certificate);
    void OnDownload(WebKitDownload* download);
    void OnProcessEnded();

    Ui::Window& window_;
    const Authorities& authorities_;
    WebViewClient& client_;
    Base::Owner<WebKitNetworkSession, g_object_unref> session_;
    Base::Owner<WebKitWebView, g_object_unref> view_;
    PageHistory history_;
    FieldWatch fields_;
    std::unique_ptr<AnswerIntake> intake_;  // of the answer that is handed over now
    Graphics::Rectangle place_;
    double level_ = 0.5;
    double scale_ = 1;

    // What happens to the page, as far as it is to be told.
    bool awaitsStart_ = false;     // what is heard before is of an earlier load
    std::string ownUrl_;           // of the page that was given last, until one is to be fetched
    int triesLeft_ = 0;            // of a fetch that seems to be cancelled
    bool awaitsDownload_ = false;  // the next is the answer to hand over
    bool isOwn_ = false;           // given, not fetched, until it is there
    bool isThere_ = false;         // and has not failed since
    bool showsFailure_ = false;    // our own words
    std::shared_ptr<PageView*> self_ = std::make_shared<PageView*>(this);  // for decisions
};

}  // namespace Osp::Web
