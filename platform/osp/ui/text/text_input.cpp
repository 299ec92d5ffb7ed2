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
    Controls::EditArea* const area = target_.Get();
    const Screen& screen = Screen::Current();
    const bool isThere = area != nullptr && screen.IsForeground() && area->IsVisible() &&
                         IsIn(*area, screen.GetInputRoot());
    return isThere ? area : nullptr;
}

void TextInput::Focus(Controls::EditArea& area, bool isByTouch) {
    Controls::EditArea* const former = target_.Get();
    if (former != &area) {
        if (former != nullptr) former->RequestRedraw();
        target_ = WeakControl(area);
        area.RequestRedraw();
    }
    if (isByTouch) isRealKeyboardUsed_ = false;
    isKeyboardWanted_ = !isRealKeyboardUsed_;
    UpdateKeyboard();
    Follow();
}

void TextInput::Refresh() {
    Controls::EditArea* const area = target_.Get();
    const bool isGone =
        area == nullptr || !area->GetShowState() || !Screen::Current().IsOfApplication(*area);
    if (!isGone) return;
    target_ = {};
    UpdateKeyboard();
    Follow();
}

void TextInput::HideKeyboard() {
    isKeyboardWanted_ = false;
    UpdateKeyboard();
}

void TextInput::UseRealKeyboard() {
    if (GetTarget() == nullptr) return;
    isRealKeyboardUsed_ = true;
    HideKeyboard();
}

void TextInput::UpdateKeyboard() {
    const bool isShown = target_.Get() != nullptr && isKeyboardWanted_;
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
    Edit([&](TextField& field) { field.Insert(text.Units()); });
}

void TextInput::Delete(TextEditor::Step step) {
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
    if (target_.Get() != &area) return;
    if (method_ != nullptr) method_->Abandon();
    Follow();
}

void TextInput::Follow() {
    if (method_ != nullptr) method_->Follow();
}

}  // namespace Osp::Ui
