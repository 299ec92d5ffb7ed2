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
    return GetCurrentForm();
}

std::vector<Container*> Screen::GetRoots() const {
    std::vector<Container*> roots;
    if (GetCurrentForm() != nullptr) roots.push_back(GetCurrentForm());
    roots.insert(roots.end(), modals_.begin(), modals_.end());
    return roots;
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
    const RegionOwner damage(std::exchange(damage_, RegionOwner(cairo_region_create())));
    Paint(roots, *damage, picture_);
    if (const Control* const focus = GetFocus()) PaintFocus(*focus, *damage, picture_);
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
