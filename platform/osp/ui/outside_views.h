// What lies on the screen in the place of a control and is not drawn by it: a page of the web.
#pragma once

#include <cairo.h>
#include <functional>
#include <memory>
#include <vector>

#include <osp/graphics/rectangle.h>
#include <osp/ui/container.h>

#include "osp/graphics/surface.h"

namespace Osp::Ui {

/// Shown by the window over the picture of the screen.
class OutsideView {
  public:
    virtual ~OutsideView() = default;
    /// The part of the screen where it is from now on; empty while it is not to be seen.
    virtual void Place(const Graphics::Rectangle& place) = 0;
};

/// The screen's outside views, and the picture of what lies above them. Loop thread only.
class OutsideViews {
  public:
    /// `view` is in the place of `control` until it is taken out, which comes before either ends.
    void Add(const Control& control, OutsideView& view);
    void Remove(const OutsideView& view);

    /// The first whose control is visible and answers; null when there is none.
    OutsideView* Find(const std::function<bool(const Control&)>& answers) const;
    OutsideView* Of(const Control& control) const;

    /// Tells the views where they are now, within `limit`. Returns whether any has a new place; then
    /// all of the picture above has to be painted.
    bool Follow(const Graphics::Rectangle& limit);

    /// Brings that picture up to date inside `damage`, which is in screen pixels.
    void PaintAbove(const std::vector<Container*>& roots, const Control* focus,
                    const cairo_region_t& damage);
    /// Transparent where nothing lies above a view; null while no view has a place.
    const Graphics::Surface* GetPictureAbove() const;
    /// Counts how often it has been painted.
    unsigned GetPaintings() const { return paintings_; }

  private:
    struct Entry {
        const Control* control;  // not owned
        OutsideView* view;       // not owned
        Graphics::Rectangle place;
    };

    std::vector<Entry> entries_;
    std::unique_ptr<Graphics::Surface> above_;  // null until painted for the present places
    unsigned paintings_ = 0;
};

}  // namespace Osp::Ui
