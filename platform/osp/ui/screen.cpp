// What is damaged is kept from one Compose to the next, as screen pixels, and the presenter is told
// once, when the first of it appears: it asks for the picture when it can show one. What belongs to
// another form than the current one damages nothing; making a form current damages all. A region
// that a control damages while Compose lets it draw is painted by the same Compose, because the
// damage is taken only afterwards.
//
// Layers lie on the stacks of their own RunModal, innermost last. They end in the reverse order
// even when they are answered in another, because an outer loop goes on only when the inner has
// ended.
#include "osp/ui/screen.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "osp/base/event_loop.h"
#include "osp/ui/access.h"
#include "osp/ui/compositor.h"
#include "osp/ui/hit.h"
#include "osp/ui/modal_layer.h"

namespace Osp::Ui {

Screen::Screen()
    : picture_(kSize, Graphics::Surface::Kind::kOpaque), damage_(cairo_region_create()) {
    DamageAll();
}

Screen::~Screen() = default;

Controls::Form* Screen::GetCurrentForm() const {
    return frame_ == nullptr ? nullptr : frame_->GetCurrentForm();
}

Container* Screen::GetInputRoot() const {
    if (!modals_.empty()) return modals_.back();
    if (!popups_.empty()) return popups_.back();
    return GetCurrentForm();
}

bool Screen::TakesInput(const Control& control) const {
    return IsIn(control, GetInputRoot()) || (TakesKeyboardInput() && IsIn(control, keyboard_));
}

bool Screen::IsOfApplication(const Control& control) const {
    return IsIn(control, GetCurrentForm()) ||
           std::ranges::any_of(popups_, [&](const auto* popup) { return IsIn(control, popup); });
}

Control* Screen::FindTouchableAt(Graphics::Point position) const {
    if (TakesKeyboardInput()) {
        if (Control* const key = FindTouchable(*keyboard_, position)) return key;
    }
    Container* const root = GetInputRoot();
    return root == nullptr ? nullptr : FindTouchable(*root, position);
}

std::vector<Container*> Screen::GetRoots() const {
    std::vector<Container*> roots;
    if (GetCurrentForm() != nullptr) roots.push_back(GetCurrentForm());
    roots.insert(roots.end(), popups_.begin(), popups_.end());
    roots.insert(roots.end(), modals_.begin(), modals_.end());
    if (TakesKeyboardInput()) roots.push_back(keyboard_);
    return roots;
}

void Screen::OpenPopup(Controls::Popup& popup) {
    assert(std::ranges::find(popups_, &popup) == popups_.end());
    popups_.push_back(&popup);
    DamageAll();
}

void Screen::ClosePopup(Controls::Popup& popup) {
    std::erase(popups_, &popup);
    DamageAll();
}

void Screen::SetKeyboard(Container* keyboard) {
    ShowKeyboard(false);
    keyboard_ = keyboard;
}

void Screen::ShowKeyboard(bool shown) {
    assert(!shown || keyboard_ != nullptr);
    if (shown == isKeyboardShown_) return;
    isKeyboardShown_ = shown;
    for (Controls::Popup* popup : popups_) Access::Place(*popup);
    DamageAll();
}

void Screen::SetForeground(bool foreground) {
    foreground_ = foreground;
    FollowOutside();
}

void Screen::FollowOutside() {
    const int bottom = isKeyboardShown_ ? keyboard_->GetBounds().y : kSize.height;
    // What lies above them is painted only where they are.
    if (outside_.Follow({0, 0, kSize.width, bottom})) DamageAll();
}

OutsideView* Screen::GetTypedInto() const {
    if (!foreground_) return nullptr;
    return outside_.Find([this](const Control& control) { return TakesInput(control); });
}

void Screen::SetFocus(Control* control) {
    Control* const former = focus_.Get();
    if (former == control) return;
    if (former != nullptr) Damage(*former);
    focus_ = control == nullptr ? WeakControl<Control>() : WeakControl<Control>(*control);
    if (control != nullptr) Damage(*control);
}

Control* Screen::GetFocus() const {
    Control* const control = focus_.Get();
    return control != nullptr && IsIn(*control, GetInputRoot()) ? control : nullptr;
}

void Screen::Damage(const Control& control) {
    const Control* root = &control;
    while (root->GetParent() != nullptr && root->GetParent() != frame_) root = root->GetParent();
    const bool isOther = dynamic_cast<const Controls::Form*>(root) && root != GetCurrentForm();
    if (isOther) return;
    const Graphics::Rectangle area = control.GetScreenBounds();
    const cairo_rectangle_int_t rectangle{area.x, area.y, area.width, area.height};
    const bool isFirst = !IsDamaged();
    cairo_region_union_rectangle(damage_.get(), &rectangle);
    if (isFirst && presenter_ != nullptr) presenter_->FrameWanted();
}

void Screen::DamageAll() {
    const cairo_rectangle_int_t all{0, 0, kSize.width, kSize.height};
    cairo_region_union_rectangle(damage_.get(), &all);
    if (presenter_ != nullptr) presenter_->FrameWanted();
}

const Graphics::Surface& Screen::Compose() {
    const std::vector<Container*> roots = GetRoots();
    for (Container* root : roots) DrawPending(*root);
    FollowOutside();
    const RegionOwner damage(std::exchange(damage_, RegionOwner(cairo_region_create())));
    Paint(roots, *damage, picture_);
    const Control* const focus = GetFocus();
    if (focus != nullptr) PaintFocus(*focus, *damage, picture_);
    outside_.PaintAbove(roots, focus, *damage);
    return picture_;
}

void Screen::PresentNow() {
    if (presenter_ != nullptr) presenter_->PresentNow();
}

void Screen::RunModal(ModalLayer& layer) {
    // Going to the background answers what waits, so nothing begins to wait there.
    if (!foreground_) return;
    assert(std::ranges::find(modals_, &layer) == modals_.end());
    modals_.push_back(&layer);
    DamageAll();
    Base::EventLoop::Current().RunHoldingApplication([&layer] { return layer.IsAnswered(); });
    assert(modals_.back() == &layer);
    modals_.pop_back();
    DamageAll();
}

void Screen::AnswerModals() {
    for (ModalLayer* layer : modals_) layer->Answer();
}

}  // namespace Osp::Ui
