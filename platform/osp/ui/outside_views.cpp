// A view lies over the whole picture of the screen, and what is above its control would be hidden.
// So that is painted a second time, into a picture of its own, which the window lays over the view:
// only inside the places of views, because elsewhere the screen's own picture shows it already, and
// what is half transparent must not be seen twice.
#include "osp/ui/outside_views.h"

#include <algorithm>
#include <utility>

#include "osp/base/owner.h"
#include "osp/ui/compositor.h"
#include "osp/ui/screen.h"

namespace Osp::Ui {

namespace {

using RegionOwner = Base::Owner<cairo_region_t, cairo_region_destroy>;

Graphics::Rectangle Common(const Graphics::Rectangle& a, const Graphics::Rectangle& b) {
    const int left = std::max(a.x, b.x);
    const int top = std::max(a.y, b.y);
    const int right = std::min(a.x + a.width, b.x + b.width);
    const int bottom = std::min(a.y + a.height, b.y + b.height);
    if (right <= left || bottom <= top) return {};
    return {left, top, right - left, bottom - top};
}

}  // namespace

void OutsideViews::Add(const Control& control, OutsideView& view) {
    entries_.push_back({&control, &view, {}});
    Screen::Current().Damage(control);
}

void OutsideViews::Remove(const OutsideView& view) {
    std::erase_if(entries_, [&](const Entry& entry) { return entry.view == &view; });
    if (entries_.empty()) above_.reset();
}

OutsideView* OutsideViews::Find(const std::function<bool(const Control&)>& answers) const {
    const auto found = std::ranges::find_if(entries_, [&](const Entry& entry) {
        return entry.control->IsVisible() && answers(*entry.control);
    });
    return found == entries_.end() ? nullptr : found->view;
}

OutsideView* OutsideViews::Of(const Control& control) const {
    return Find([&](const Control& other) { return &other == &control; });
}

bool OutsideViews::Follow(const Graphics::Rectangle& limit) {
    bool hasMoved = false;
    for (Entry& entry : entries_) {
        const Graphics::Rectangle place = entry.control->IsVisible()
                                              ? Common(entry.control->GetScreenBounds(), limit)
                                              : Graphics::Rectangle{};
        if (std::exchange(entry.place, place) == place) continue;
        entry.view->Place(place);
        hasMoved = true;
    }
    // Painted anew, and transparent where no view is any more.
    if (hasMoved) above_.reset();
    return hasMoved;
}

void OutsideViews::PaintAbove(const std::vector<Container*>& roots, const Control* focus,
                              const cairo_region_t& damage) {
    if (entries_.empty()) return;
    const RegionOwner places(cairo_region_create());
    std::vector<const Control*> controls;
    for (const Entry& entry : entries_) {
        if (entry.place.IsEmpty()) continue;
        controls.push_back(entry.control);
        const auto& [x, y, width, height] = entry.place;
        const cairo_rectangle_int_t rectangle{x, y, width, height};
        cairo_region_union_rectangle(places.get(), &rectangle);
    }
    cairo_region_intersect(places.get(), &damage);
    if (cairo_region_is_empty(places.get())) return;
    if (!above_) {
        above_ =
            std::make_unique<Graphics::Surface>(Screen::kSize, Graphics::Surface::Kind::kWithAlpha);
    }
    Ui::PaintAbove(roots, controls, *places, *above_);
    if (focus != nullptr) PaintFocus(*focus, *places, *above_);
    ++paintings_;
}

const Graphics::Surface* OutsideViews::GetPictureAbove() const {
    const bool isNeeded =
        std::ranges::any_of(entries_, [](const Entry& entry) { return !entry.place.IsEmpty(); });
    return isNeeded ? above_.get() : nullptr;
}

}  // namespace Osp::Ui
