// What a web control loads, and what it hears of that.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>

#include <osp/ui/i_touch_event_listener.h>
#include <osp/web/controls/web.h>

#include "osp/web/web_engine.h"

namespace Osp::Web::Controls {

/// The control's own; see its contract.
class Page : private WebViewClient, private Ui::ITouchEventListener {
  public:
    /// `control` owns the page.
    explicit Page(Web& control);
    static Page& Of(const Web& control) { return *control.page_; }
    ~Page() override;
    Page(const Page&) = delete;
    Page& operator=(const Page&) = delete;

    void SetLoadingListener(ILoadingListener* listener) { loadingListener_ = listener; }
    void SetDownloadListener(IWebDownloadListener* listener) { downloadListener_ = listener; }

    /// An http or https URL.
    void LoadUrl(std::string url) { Load(std::move(url)); }
    void LoadData(PageData data);
    void SetScriptsEnabled(bool enabled) { runsScripts_ = enabled; }
    void Clear();
    std::string GetUrl() const;
    bool CanGoBack() const { return view_ && view_->CanGoBack(); }
    void GoBack();
    void SetZoomLevel(double level);

    /// Runs what waits, once the control's form is the current one.
    void BeginWhenCurrent();
    /// Why no page can be shown here; empty as far as is known.
    const std::string& WhyNot() const { return whyNot_; }

    /// Calls `taken` from the loop when the control draws itself as the page looks, until
    /// DropPicture; at once when there is no page.
    void TakePicture(std::function<void()> taken);
    void DropPicture();
    /// Null without one.
    const Graphics::Surface* GetPicture() const { return picture_.get(); }

  private:
    using Wanted = std::variant<std::string, PageData>;  // a URL, or a page

    void Load(Wanted wanted);
    void Begin();
    void Run();
    void MakeView();
    void DropView();
    /// Runs `task` as an application event, unless something else is loaded by then.
    void Later(std::function<void()> task);

    void OnPageFinished() override;
    void OnAnswer(const std::string& url, std::shared_ptr<AnswerDecision> decision) override;
    void OnChunk(Bytes chunk) override;
    void OnFieldEntered(bool isByTouch) override;
    void OnFieldLeft() override;

    // The page has the touches of the window. These are a script's, which nobody needs to hear.
    void OnTouchPressed(const Ui::Control&, const Graphics::Point&) override {}
    void OnTouchMoved(const Ui::Control&, const Graphics::Point&) override {}
    void OnTouchReleased(const Ui::Control&, const Graphics::Point&) override {}

    Web& control_;
    ILoadingListener* loadingListener_ = nullptr;       // not owned
    IWebDownloadListener* downloadListener_ = nullptr;  // not owned
    std::optional<Wanted> wanted_;                      // waits for the form to be current
    bool runsScripts_ = true;
    double zoomLevel_ = 0.5;
    bool isBeginning_ = false;  // Begin is on its way
    std::string whyNot_;
    std::unique_ptr<WebView> view_;
    std::shared_ptr<Graphics::Surface> picture_;
    std::shared_ptr<unsigned> generation_;  // of what is loaded; ends with the page
};

}  // namespace Osp::Web::Controls
