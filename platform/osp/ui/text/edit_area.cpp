#include <cassert>
#include <chrono>
#include <cstdlib>
#include <memory>

#include <osp/ui/controls/edit_area.h>

#include "osp/base/event_loop.h"
#include "osp/graphics/surface.h"
#include "osp/ui/access.h"
#include "osp/ui/text/text_field.h"
#include "osp/ui/text/text_input.h"

namespace Osp::Ui::Controls {

namespace {

constexpr int kLeastSide = 64;
constexpr int kDragFrom = 10;  // pixels; a shorter way is a tap
constexpr auto kDoubleTap = std::chrono::milliseconds(400);
constexpr int kDoubleTapReach = 24;  // pixels

}  // namespace

/// The touch under way, and the tap before it.
struct EditArea::Finger {
    Graphics::Point down;
    int lastY = 0;
    bool isDrag = false;
    Graphics::Point tap;
    Base::TimePoint tapTime{Base::Duration::min() / 2};
};

EditArea::EditArea() : finger_(std::make_unique<Finger>()) {
    AddTouchEventListener(*this);
}

EditArea::~EditArea() = default;

result EditArea::Construct(const Graphics::Rectangle& bounds) {
    if (bounds.width < kLeastSide || bounds.height < kLeastSide) return result::kInvalidArgument;
    SetBounds(bounds);
    field_ = std::make_unique<TextField>(bounds.Size());
    return result::kSuccess;
}

result EditArea::SetText(const Base::String& text) {
    if (!field_) return result::kInvalidState;
    field_->SetText(text.Units());
    RequestRedraw();
    TextInput::Current().Changed(*this);
    return result::kSuccess;
}

Base::String EditArea::GetText() const {
    return field_ ? Base::String(field_->Editor().Text()) : Base::String();
}

result EditArea::SetLimitLength(int limit) {
    if (!field_) return result::kInvalidState;
    if (limit < 0) return result::kInvalidArgument;
    field_->SetLimit(limit);
    RequestRedraw();
    return result::kSuccess;
}

result EditArea::OnDraw() {
    const std::unique_ptr<Graphics::Canvas> canvas(GetCanvasN());
    if (!canvas) return result::kSuccess;
    const result r = canvas->Clear();
    if (Failed(r)) return r;
    const Graphics::CairoPointer context(cairo_create(Access::Picture(*this)->Cairo()));
    field_->Paint(context.get(), TextInput::Current().GetTarget() == this);
    return result::kSuccess;
}

void EditArea::OnTouchPressed(const Control&, const Graphics::Point& position) {
    finger_->down = position;
    finger_->lastY = position.y;
    finger_->isDrag = false;
}

void EditArea::OnTouchMoved(const Control&, const Graphics::Point& position) {
    if (std::abs(position.y - finger_->down.y) > kDragFrom) finger_->isDrag = true;
    if (!finger_->isDrag) return;
    field_->ScrollBy(finger_->lastY - position.y);
    finger_->lastY = position.y;
    RequestRedraw();
}

void EditArea::OnTouchReleased(const Control&, const Graphics::Point& position) {
    if (finger_->isDrag) return;
    const Base::TimePoint now = Base::EventLoop::Current().GetClock().Now();
    const bool isNear = std::abs(position.x - finger_->tap.x) <= kDoubleTapReach &&
                        std::abs(position.y - finger_->tap.y) <= kDoubleTapReach;
    const bool isDouble = isNear && now - finger_->tapTime <= kDoubleTap;
    finger_->tap = position;
    finger_->tapTime = now;
    const Graphics::Rectangle bounds = GetScreenBounds();
    const Graphics::Point inside{position.x - bounds.x, position.y - bounds.y};
    isDouble ? field_->SelectWord(inside) : field_->MoveTo(inside);
    RequestRedraw();
    TextInput::Current().Changed(*this);
    // Last: the popup moves when the keyboard comes.
    TextInput::Current().Focus(*this, true);
}

}  // namespace Osp::Ui::Controls
