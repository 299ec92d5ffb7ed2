// The focus of text is not the ring of the keyboard's focus: the ring says which button Enter
// presses, and goes with the next touch; the area stays the one that is written in, also while its
// keys on the screen are touched.
#include "osp/ui/text/text_input.h"

#include <utility>

#include "osp/base/event_loop.h"
#include "osp/ui/access.h"
#include "osp/ui/hit.h"
#include "osp/ui/input.h"
#include "osp/ui/screen.h"
#include "osp/ui/text/keyboard.h"
#include "osp/ui/text/text_field.h"

namespace Osp::Ui {

namespace {

bool IsThere(const Control& control) {
    const Screen& screen = Screen::Current();
    return screen.IsForeground() && control.IsVisible() && IsIn(control, screen.GetInputRoot());
}

}  // namespace

TextInput::TextInput(std::string language) : language_(std::move(language)) {
    Input::Current().WatchLetGo([this] {
        if (keyboard_) keyboard_->LetGo();
        // What the finger was taken for, another form, has not happened yet.
        Base::EventLoop::Current().Post(Base::EventClass::kSystem, [] {
            if (TextInput::IsInstalled()) TextInput::Current().Refresh();
        });
    });
}

TextInput::~TextInput() {
    Input::Current().WatchLetGo(nullptr);
    Screen::Current().SetKeyboard(nullptr);
}

Controls::EditArea* TextInput::GetTarget() const {
    Control* const target = outside_ == nullptr ? Target() : nullptr;
    return target != nullptr && IsThere(*target) ? dynamic_cast<Controls::EditArea*>(target)
                                                 : nullptr;
}

Control* TextInput::GetOutsideTarget() const {
    Control* const target = outside_ == nullptr ? nullptr : Target();
    return target != nullptr && IsThere(*target) ? target : nullptr;
}

void TextInput::SetTarget(Control& control, OutsideField* field) {
    Control* const former = Target();
    if (former == &control && outside_ == field) return;
    if (former != nullptr && outside_ == nullptr) former->RequestRedraw();
    target_ = WeakControl(control);
    outside_ = field;
    if (field == nullptr) control.RequestRedraw();
}

void TextInput::ShowKeyboardFor(bool isByTouch) {
    if (isByTouch) isRealKeyboardUsed_ = false;
    isKeyboardWanted_ = !isRealKeyboardUsed_;
    UpdateKeyboard();
    Follow();
}

void TextInput::Focus(Controls::EditArea& area, bool isByTouch) {
    SetTarget(area, nullptr);
    ShowKeyboardFor(isByTouch);
}

void TextInput::FocusOutside(Control& control, OutsideField& field, bool isByTouch) {
    // Behind a popup a page does not take the keyboard from it.
    if (Screen::Current().HasPopup()) return;
    SetTarget(control, &field);
    ShowKeyboardFor(isByTouch);
}

void TextInput::LeaveOutside(const OutsideField& field) {
    if (outside_ != &field) return;
    Forget();
}

void TextInput::Refresh() {
    const Control* const control = Target();
    const bool isGone = control == nullptr || !control->GetShowState() ||
                        !Screen::Current().IsOfApplication(*control);
    if (isGone) Forget();
}

void TextInput::Forget() {
    target_ = {};
    outside_ = nullptr;
    UpdateKeyboard();
    Follow();
}

void TextInput::HideKeyboard() {
    isKeyboardWanted_ = false;
    UpdateKeyboard();
}

void TextInput::UseRealKeyboard() {
    if (GetTarget() == nullptr && GetOutsideTarget() == nullptr) return;
    isRealKeyboardUsed_ = true;
    HideKeyboard();
}

void TextInput::UpdateKeyboard() {
    const bool isShown = Target() != nullptr && isKeyboardWanted_;
    Screen& screen = Screen::Current();
    if (isShown && !keyboard_) {
        keyboard_ = std::make_unique<Keyboard>(language_);
        screen.SetKeyboard(keyboard_.get());
    }
    if (isShown == screen.IsKeyboardShown()) return;
    if (isShown) keyboard_->Reset();
    screen.ShowKeyboard(isShown);
}

template <class Change>
void TextInput::Edit(Change change) {
    Controls::EditArea* const area = GetTarget();
    if (area == nullptr) return;
    change(*Access::Field(*area));
    area->RequestRedraw();
    Follow();
}

void TextInput::Insert(const Base::String& text) {
    if (GetOutsideTarget() != nullptr) return outside_->Insert(text);
    Edit([&](TextField& field) { field.Insert(text.Units()); });
}

void TextInput::Delete(TextEditor::Step step) {
    if (GetOutsideTarget() != nullptr) return outside_->Delete(step);
    Edit([&](TextField& field) { field.Delete(step); });
}

void TextInput::Move(CaretMove move, bool extend) {
    Edit([&](TextField& field) { field.Move(move, extend); });
}

void TextInput::SelectAll() {
    Edit([](TextField& field) { field.SelectAll(); });
}

void TextInput::SetComposition(const Base::String& text, int caret) {
    Edit([&](TextField& field) { field.SetComposition(text.Units(), caret); });
}

Base::String TextInput::GetSelection() const {
    const Controls::EditArea* const area = GetTarget();
    return area == nullptr ? Base::String()
                           : Base::String(Access::Field(*area)->Editor().SelectedText());
}

Graphics::Rectangle TextInput::GetCaret() const {
    const Controls::EditArea* const area = GetTarget();
    if (area == nullptr) return {};
    const Graphics::Rectangle bounds = area->GetScreenBounds();
    return Access::Field(*area)->CaretBounds().MovedBy(bounds.x, bounds.y);
}

void TextInput::Changed(const Controls::EditArea& area) {
    if (Target() != &area) return;
    if (method_ != nullptr) method_->Abandon();
    Follow();
}

void TextInput::Follow() {
    if (method_ != nullptr) method_->Follow();
}

}  // namespace Osp::Ui
