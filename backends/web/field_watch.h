// The fields of pages that can be written in.
#pragma once

#include <functional>
#include <glib.h>
#include <webkit/webkit.h>

namespace Osp::Web {

/// A script of ours runs beside those of every page, which see nothing of it: it says when the
/// caret is in such a field, and keeps that in view when the view becomes smaller.
class FieldWatch {
  public:
    /// `entered` is also called when the field in use is touched again; `left` not when the next
    /// one is entered at once. From the loop.
    FieldWatch(WebKitUserContentManager* content, std::function<void(bool isByTouch)> entered,
               std::function<void()> left);
    ~FieldWatch();
    FieldWatch(const FieldWatch&) = delete;
    FieldWatch& operator=(const FieldWatch&) = delete;

    /// There is another page, or none.
    void Forget();

    /// Does what Enter does in the field.
    static void PressEnter(WebKitWebView* view);

  private:
    void OnMessage(int message);

    WebKitUserContentManager* content_;
    std::function<void(bool)> entered_;
    std::function<void()> left_;
    bool isEdited_ = false;
    guint leaving_ = 0;  // a timeout of GLib's
};

}  // namespace Osp::Web
