// What the web control asks of an engine that fetches and shows pages.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <osp/web/controls/i_loading_listener.h>

#include "osp/base/service.h"
#include "osp/graphics/surface.h"
#include "osp/ui/outside_views.h"
#include "osp/ui/text/text_input.h"

namespace Osp::Web {

using Bytes = std::vector<unsigned char>;

/// A page that is given, not fetched. The texts are UTF-8.
struct PageData {
    std::string baseUrl;
    Bytes content;
    std::string mimeType;
    std::string encoding;
    bool runsScripts = true;
};

/// What is to become of an answer that has begun to come. Dropped unmade, the answer is given up.
class AnswerDecision {
  public:
    virtual ~AnswerDecision() = default;
    /// Once. Nothing happens when the view is gone or loads something else by then.
    virtual void Make(Controls::DecisionPolicy policy) = 0;
};

/// Told what a view does, on the loop thread, at any time: also inside calls to the view.
class WebViewClient {
  public:
    virtual ~WebViewClient() = default;
    /// A page is there; not for the engine's own words about a failure.
    virtual void OnPageFinished() = 0;
    /// Of the main frame, with success, from the net.
    virtual void OnAnswer(const std::string& url, std::shared_ptr<AnswerDecision> decision) = 0;
    /// The next part of an answer that was decided to be handed over, in order.
    virtual void OnChunk(Bytes chunk) = 0;
    /// A field of the page can be written in from now on, or has been touched again.
    virtual void OnFieldEntered(bool isByTouch) = 0;
    virtual void OnFieldLeft() = 0;
};

/// One page after the other, as a view on the screen. Ends without a trace. Loop thread only.
class WebView : public Ui::OutsideView, public Ui::OutsideField {
  public:
    /// An http or https URL.
    virtual void LoadUrl(const std::string& url) = 0;
    virtual void LoadData(PageData data) = 0;
    virtual std::string GetUrl() const = 0;
    virtual bool CanGoBack() const = 0;
    virtual void GoBack() = 0;
    /// One pixel of a page is `level` x 2 pixels of the screen.
    virtual void SetZoomLevel(double level) = 0;
    /// Calls `taken` from the loop, in the size of the view's place; with null when that fails.
    virtual void TakePicture(
        std::function<void(std::shared_ptr<Graphics::Surface> picture)> taken) = 0;
};

/// Loop thread only.
class WebEngine : public Service<WebEngine> {
  public:
    virtual ~WebEngine() = default;
    /// A new view of its own cookies, for `client`, which outlives it. Null when there cannot be
    /// one; then `whyNot` says so in a sentence.
    virtual std::unique_ptr<WebView> MakeView(WebViewClient& client, std::string& whyNot) = 0;
};

}  // namespace Osp::Web
