#include <chrono>

#include <osp/ui/controls/message_box.h>

#include "osp/base/event_loop.h"
#include "osp/ui/modal_layer.h"
#include "osp/ui/screen.h"

namespace Osp::Ui::Controls {

result MessageBox::Construct(const Base::String& title, const Base::String& text,
                             MessageBoxStyle style, int timeoutMs) {
    if (timeoutMs < 0 || (timeoutMs == 0 && style == MessageBoxStyle::kNone)) {
        return result::kInvalidArgument;
    }
    title_ = title;
    text_ = text;
    style_ = style;
    timeoutMs_ = timeoutMs;
    return result::kSuccess;
}

result MessageBox::ShowAndWait() {
    ModalLayer layer(title_, text_, style_);
    Base::EventLoop& loop = Base::EventLoop::Current();
    Base::EventLoop::TimerId timeout = 0;
    if (timeoutMs_ > 0) {
        timeout = loop.StartTimer(Base::EventClass::kSystem, std::chrono::milliseconds(timeoutMs_),
                                  [&layer] { layer.Answer(); });
    }
    Screen::Current().RunModal(layer);
    loop.CancelTimer(timeout);
    return result::kSuccess;
}

}  // namespace Osp::Ui::Controls
