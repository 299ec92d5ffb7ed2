// A question or a notice that waits for its answer.
#pragma once

#include <osp/base/result.h>
#include <osp/base/string.h>

namespace Osp::Ui::Controls {

enum class MessageBoxStyle { kNone = 0, kOk = 1 };

/// Used any number of times. Loop thread only.
class MessageBox {
  public:
    /// Lines of `text` are parted by "\n" or "\r\n". A `timeoutMs` of 0 waits for the user.
    /// kInvalidArgument for a negative time-out and for a box without button and time-out, which
    /// would never end.
    result Construct(const Base::String& title, const Base::String& text, MessageBoxStyle style,
                     int timeoutMs);

    /// Shows the box above everything and returns when its button was tapped, its time is over, or
    /// the application goes to the background or ends; there it does not wait at all. Application
    /// events wait meanwhile, those of its own camera and timers among them. Always succeeds.
    result ShowAndWait();

  private:
    Base::String title_;
    Base::String text_;
    MessageBoxStyle style_ = MessageBoxStyle::kNone;
    int timeoutMs_ = 0;
};

}  // namespace Osp::Ui::Controls
