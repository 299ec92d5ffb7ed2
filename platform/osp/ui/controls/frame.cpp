// A form's life in the frame: added, then OnInitializing (whose failure takes it out again and
// leaves it to the caller); current any number of times; OnTerminating while it is still in the
// frame; taken out; deleted when no event is on the stack. So OnTerminating can still reach frame
// and screen, and a form that removes itself returns into an object that is there.
//
// At the end of the frame no loop runs any more: the forms that are left go at once, the last added
// first, because later forms refer to earlier ones.
#include <osp/ui/controls/frame.h>

#include "osp/ui/access.h"
#include "osp/ui/input.h"
#include "osp/ui/screen.h"

namespace Osp::Ui::Controls {

Frame::Frame() {
    SetBounds({0, 0, Screen::kSize.width, Screen::kSize.height});
    Screen::Current().SetFrame(this);
}

Frame::~Frame() {
    current_ = nullptr;
    const auto& forms = Access::Children(*this);
    while (!forms.empty()) {
        Control& last = *forms.back();
        (void)last.OnTerminating();
        (void)Access::Release(*this, last);
    }
    Screen::Current().SetFrame(nullptr);
}

result Frame::AddControl(Control* control) {
    auto* const form = dynamic_cast<Form*>(control);
    if (form == nullptr) return result::kInvalidArgument;
    result r = Container::AddControl(form);
    if (Failed(r)) return r;
    r = form->OnInitializing();
    // The caller owns the form again.
    if (Failed(r)) (void)Access::Release(*this, *form).release();
    return r;
}

result Frame::RemoveControl(Control& control) {
    if (control.GetParent() != this) return result::kObjectNotFound;
    if (current_ == &control) current_ = nullptr;
    (void)control.OnTerminating();
    return Container::RemoveControl(control);
}

result Frame::SetCurrentForm(Form* form) {
    if (form == nullptr) return result::kInvalidArgument;
    if (form->GetParent() != this) return result::kObjectNotFound;
    // What is held down belongs to the form on which it went down.
    if (form != current_) Input::Current().LetGo();
    current_ = form;
    const result r = current_->Draw();
    Invalidate();
    return r;
}

result Frame::Draw() {
    return current_ == nullptr ? result::kInvalidState : current_->Draw();
}

result Frame::Show() {
    return current_ == nullptr ? result::kInvalidState : current_->Show();
}

}  // namespace Osp::Ui::Controls
