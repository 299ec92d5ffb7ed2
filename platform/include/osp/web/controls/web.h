// A page of the web.
#pragma once

#include <memory>

#include <osp/base/byte_buffer.h>
#include <osp/base/result.h>
#include <osp/base/string.h>
#include <osp/graphics/rectangle.h>
#include <osp/ui/control.h>
#include <osp/web/controls/i_loading_listener.h>
#include <osp/web/controls/i_web_download_listener.h>

namespace Osp::Web::Controls {

class Page;

/// Loads wait until the control's form is current for the first time, and only the last of them is
/// run; so the engine starts when it is needed. Where there is no engine, no display or no sandbox
/// to run it in, the control says so in words and nothing is ever loaded. Cookies and whatever else
/// pages leave end with the control, or with Clear. Only http and https are gone to; whether servers
/// are who they say they are is always verified. Pages have no other windows, files, cameras, notes
/// or dialogs: whatever they ask for is refused, and new windows open in the same place. While the
/// application is in the background pages rest.
///
/// Touches and keys on it go to the page, but those of the controls above it. Loop thread only.
class Web : public Ui::Control {
  public:
    Web();
    ~Web() override;

    /// kInvalidArgument for an empty area.
    result Construct(const Graphics::Rectangle& bounds);

    /// Not owned; they outlive the control, or null takes them away.
    void SetLoadingListener(ILoadingListener* listener);
    void SetDownloadListener(IWebDownloadListener* listener);

    /// kInvalidArgument, loading nothing, for anything but http and https.
    result LoadUrl(const Base::String& url);
    /// Shows what remains of `content`, which is copied, as if it had come from `baseUrl`, which
    /// need not be a URL at all.
    result LoadData(const Base::String& baseUrl, const Base::ByteBuffer& content,
                    const Base::String& mimeType, const Base::String& encoding);
    /// Whether what LoadData shows from now on may run scripts; true at first. Pages that are gone
    /// to from there may in any case.
    void SetScriptsEnabled(bool enabled);
    /// Stops what is being loaded and shows nothing, as at first: nothing of the page is left, and
    /// the engine goes until the next load.
    void Clear();

    /// Of the page that is shown or being loaded; empty when there is none.
    Base::String GetUrl() const;

    /// Back to the page from which a link led here; nothing happens when there is none.
    bool CanGoBack() const;
    void GoBack();

    /// At 0.5 one pixel of a page is one of the screen. kInvalidArgument unless above 0 and at most
    /// 4. It is 0.5 at first and stays from page to page.
    result SetZoomLevel(double level);

    result OnDraw() override;

  private:
    friend class Page;

    std::unique_ptr<Page> page_;
};

}  // namespace Osp::Web::Controls
