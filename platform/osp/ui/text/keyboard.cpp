// A touch on a key has three ends: lifted inside the cell, the key acts; held, Delete repeats or
// the alternatives come, which then have the rest of the touch (hasActed_ keeps the action, which
// the button still sends, from typing as well); taken away by the system, nothing. The time of a
// long press is a system timer, so that it goes on while the application is held up.
//
// The keys of all pages exist from the start and are shown page by page: a key may be the one whose
// action changes the page.
#include "osp/ui/text/keyboard.h"

#include <chrono>
#include <glib.h>
#include <utility>

#include "osp/ui/screen.h"
#include "osp/ui/text/text_input.h"

namespace Osp::Ui {

namespace {

using std::chrono::milliseconds;

constexpr Graphics::Color kGround{0x1C, 0x1A, 0x17, 255};
constexpr milliseconds kLongPress{400};
constexpr milliseconds kRepeat{60};
constexpr milliseconds kDoubleTap{400};

std::u16string Capitals(std::u16string text) {
    for (char16_t& unit : text) unit = static_cast<char16_t>(g_unichar_toupper(unit));
    return text;
}

}  // namespace

Keyboard::Keyboard(std::string_view language) : letters_(LettersFor(language)) {
    const auto [width, height] = kKeyboardSize;
    SetBounds({0, Screen::kSize.height - height, width, height});
    SetName("Keyboard");
    // What falls beside the keys must not reach what is below.
    AddTouchEventListener(*this);
    for (const KeyPage page : kKeyPages) {
        for (KeyPlace& place : PlaceKeys(letters_, page)) AddKey(std::move(place), page);
    }
    ShowPage(KeyPage::kLetters);
}

Keyboard::~Keyboard() {
    Base::EventLoop::Current().CancelTimer(timer_);
}

void Keyboard::AddKey(KeyPlace place, KeyPage page) {
    auto key = std::make_unique<Key>(std::move(place), page);
    key->AddTouchEventListener(*this);
    key->AddActionEventListener(*this);
    if (Succeeded(AddControl(key.get()))) keys_.push_back(key.release());
}

void Keyboard::Reset() {
    ShowPage(KeyPage::kLetters);
    SetShift(ShiftState::kOff);
}

void Keyboard::LetGo() {
    Base::EventLoop::Current().CancelTimer(std::exchange(timer_, 0));
    HideAlternatives();
    held_ = nullptr;
    hasActed_ = true;
}

bool Keyboard::IsVisible() const {
    return Screen::Current().IsKeyboardShown() && Screen::Current().IsForeground();
}

result Keyboard::OnDraw() {
    const std::unique_ptr<Graphics::Canvas> canvas(GetCanvasN());
    return canvas->FillRectangle(kGround, {0, 0, kKeyboardSize.width, kKeyboardSize.height});
}

void Keyboard::OnTouchPressed(const Control& source, const Graphics::Point&) {
    held_ = dynamic_cast<const Key*>(&source);
    hasActed_ = false;
    if (held_ != nullptr) Wait(kLongPress, &Keyboard::OnHeld);
}

void Keyboard::OnTouchMoved(const Control&, const Graphics::Point& position) {
    if (alternatives_ == nullptr) return;
    alternatives_->Follow({position.x - GetBounds().x, position.y - GetBounds().y});
}

void Keyboard::OnTouchReleased(const Control&, const Graphics::Point&) {
    Base::EventLoop::Current().CancelTimer(std::exchange(timer_, 0));
    held_ = nullptr;
    if (alternatives_ == nullptr) return;
    const std::u16string chosen = alternatives_->Chosen();
    HideAlternatives();
    if (!chosen.empty()) Type(chosen);
}

void Keyboard::Wait(Base::Duration delay, void (Keyboard::*task)()) {
    timer_ = Base::EventLoop::Current().StartTimer(Base::EventClass::kSystem, delay, [this, task] {
        timer_ = 0;
        // A finger that has slid off means something else.
        if (held_ != nullptr && held_->IsPressed()) (this->*task)();
    });
}

void Keyboard::OnHeld() {
    if (held_->Place().kind == KeyKind::kDelete) return RepeatDelete();
    if (held_->Place().kind == KeyKind::kText) ShowAlternatives();
}

void Keyboard::RepeatDelete() {
    hasActed_ = true;
    TextInput::Current().Delete(TextEditor::Step::kCharacterBefore);
    Wait(kRepeat, &Keyboard::RepeatDelete);
}

void Keyboard::ShowAlternatives() {
    std::u16string characters = AlternativesOf(letters_, held_->Place().text.front());
    if (characters.empty()) return;
    if (shift_ != ShiftState::kOff) characters = Capitals(std::move(characters));
    hasActed_ = true;
    auto row = std::make_unique<Alternatives>(std::move(characters), held_->GetBounds());
    if (Succeeded(AddControl(row.get()))) alternatives_ = row.release();
}

void Keyboard::HideAlternatives() {
    if (alternatives_ == nullptr) return;
    // Hidden first: it lies outside the keyboard's own area.
    (void)alternatives_->SetShowState(false);
    (void)RemoveControl(*std::exchange(alternatives_, nullptr));
}

void Keyboard::OnActionPerformed(const Control& source, int) {
    if (std::exchange(hasActed_, false)) return;
    const Key& key = dynamic_cast<const Key&>(source);
    switch (key.Place().kind) {
        case KeyKind::kText:
        case KeyKind::kSpace:
        case KeyKind::kEnter:
            return Type(key.Typed());
        case KeyKind::kShift:
            return PressShift();
        case KeyKind::kSymbols:
            return ShowPage(KeyPage::kDigits);
        case KeyKind::kLetters:
            return ShowPage(KeyPage::kLetters);
        case KeyKind::kPage:
            return ShowPage(page_ == KeyPage::kDigits ? KeyPage::kSymbols : KeyPage::kDigits);
        case KeyKind::kDelete:
            return TextInput::Current().Delete(TextEditor::Step::kCharacterBefore);
        case KeyKind::kHide:
            return TextInput::Current().HideKeyboard();
    }
}

void Keyboard::Type(const std::u16string& text) {
    TextInput::Current().Insert(Base::String(text));
    if (shift_ == ShiftState::kOnce) SetShift(ShiftState::kOff);
}

void Keyboard::PressShift() {
    const Base::TimePoint now = Base::EventLoop::Current().GetClock().Now();
    const bool isDouble = now - std::exchange(shiftTime_, now) <= kDoubleTap;
    if (shift_ == ShiftState::kOff) return SetShift(ShiftState::kOnce);
    SetShift(shift_ == ShiftState::kOnce && isDouble ? ShiftState::kLocked : ShiftState::kOff);
}

void Keyboard::ShowPage(KeyPage page) {
    page_ = page;
    for (Key* key : keys_) (void)key->SetShowState(key->Page() == page);
}

void Keyboard::SetShift(ShiftState shift) {
    shift_ = shift;
    for (Key* key : keys_) {
        if (key->Page() == KeyPage::kLetters) key->SetShift(shift);
    }
}

}  // namespace Osp::Ui
