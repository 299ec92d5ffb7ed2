// Others hold on to a control only through self_, which ends with it: events under way, a finger
// that went down on it, the calling of its listeners. Whoever calls out to the application checks
// it again before touching the control. Nothing here draws at once but Draw: changes mark the
// control and its area, and the next frame brings both up to date.
#include <algorithm>
#include <cassert>
#include <utility>

#include <osp/ui/container.h>
#include <osp/ui/control.h>

#include "osp/base/event_loop.h"
#include "osp/base/owner.h"
#include "osp/graphics/access.h"
#include "osp/graphics/surface.h"
#include "osp/ui/access.h"
#include "osp/ui/screen.h"

namespace Osp::Ui {

namespace {

void DeleteArguments(Base::Collection::IList* list) {
    list->RemoveAll(true);
    delete list;
}
using ArgumentsOwner = Base::Owner<Base::Collection::IList, DeleteArguments>;

template <class Listener>
void AddOnce(std::vector<Listener*>& listeners, Listener& listener) {
    if (!std::ranges::count(listeners, &listener)) listeners.push_back(&listener);
}

}  // namespace

Control::Control() : self_(std::make_shared<Control*>(this)) {}

Control::~Control() = default;

result Control::SetPosition(int x, int y) {
    if (bounds_.x == x && bounds_.y == y) return result::kSuccess;
    Invalidate();
    bounds_.x = x;
    bounds_.y = y;
    Invalidate();
    return result::kSuccess;
}

Graphics::Rectangle Control::GetScreenBounds() const {
    Graphics::Rectangle bounds = bounds_;
    for (const Control* c = parent_; c != nullptr; c = c->parent_) {
        bounds = bounds.MovedBy(c->bounds_.x, c->bounds_.y);
    }
    return bounds;
}

result Control::SetShowState(bool shown) {
    if (shown_ == shown) return result::kSuccess;
    shown_ = shown;
    Invalidate();
    return result::kSuccess;
}

bool Control::IsVisible() const {
    if (!shown_) return false;
    return parent_ == nullptr ? Screen::Current().IsForeground() : parent_->IsVisible();
}

result Control::SetEnabled(bool enabled) {
    if (enabled_ == enabled) return result::kSuccess;
    enabled_ = enabled;
    Invalidate();
    return result::kSuccess;
}

result Control::Draw() {
    needsDraw_ = false;
    const result r = OnDraw();
    Invalidate();
    return r;
}

result Control::Show() {
    if (shown_) Access::Raise(*this);
    Invalidate();
    return result::kSuccess;
}

void Control::RequestRedraw() {
    needsDraw_ = true;
    Invalidate();
}

Graphics::Canvas* Control::GetCanvasN() {
    if (bounds_.IsEmpty()) return nullptr;
    if (!surface_) {
        surface_ = std::make_shared<Graphics::Surface>(bounds_.Size(),
                                                       Graphics::Surface::Kind::kWithAlpha);
    }
    return new Graphics::Canvas(Graphics::Access::MakeCanvas(surface_));
}

result Control::SendUserEvent(long requestId, Base::Collection::IList* args) {
    // The list changes hands only when somebody is there to take it.
    auto owner = std::make_shared<ArgumentsOwner>(args);
    Base::EventLoop::Current().Post(
        Base::EventClass::kApplication,
        [target = std::weak_ptr<Control*>(self_), requestId, owner = std::move(owner)] {
            if (const auto control = target.lock()) {
                (*control)->OnUserEventReceivedN(requestId, owner->release());
            }
        });
    return result::kSuccess;
}

void Control::AddTouchEventListener(ITouchEventListener& listener) {
    AddOnce(touchListeners_, listener);
}

void Control::AddKeyEventListener(IKeyEventListener& listener) {
    AddOnce(keyListeners_, listener);
}

bool Control::OnUserEventReceivedN(long, Base::Collection::IList* args) {
    const ArgumentsOwner unwanted(args);
    return false;
}

void Control::Invalidate() {
    Screen::Current().Damage(*this);
}

void Access::DrawIfNeeded(Control& control) {
    if (std::exchange(control.needsDraw_, false)) (void)control.OnDraw();
}

void Access::Raise(Control& control) {
    if (control.parent_ == nullptr) return;
    auto& siblings = control.parent_->controls_;
    const auto place = std::ranges::find(siblings, &control, &std::unique_ptr<Control>::get);
    assert(place != siblings.end());
    const auto above = siblings.end() - control.parent_->pinned_;
    if (place < above) std::rotate(place, place + 1, above);
}

}  // namespace Osp::Ui
