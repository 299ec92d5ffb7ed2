#include "osp/ui/screen.h"

#include "osp/base/event_loop.h"
#include "osp/ui/access.h"
#include "osp/ui/compositor.h"
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
    return picture_;
}

void Screen::PresentNow() {
    if (presenter_ != nullptr) presenter_->PresentNow();
}

void Screen::RunModal(ModalLayer& layer) {
    // Going to the background answers what waits, so nothing begins to wait there.
    if (!foreground_) return;
    modals_.push_back(&layer);
    DamageAll();
    Base::EventLoop::Current().RunHoldingApplication([&layer] { return layer.IsAnswered(); });
    std::erase(modals_, &layer);
    DamageAll();
}

void Screen::AnswerModals() {
    for (ModalLayer* layer : modals_) layer->Answer();
}

}  // namespace Osp::Ui
