// Which control is meant.
#pragma once

#include <osp/graphics/point.h>
#include <osp/ui/container.h>
#include <osp/ui/controls/button.h>

namespace Osp::Ui {

/// The topmost touchable control of the tree at `position`, which is relative to the parent of
/// `control`; null when there is none.
Control* FindTouchable(Control& control, Graphics::Point position);

/// Whether `control` belongs to the tree of `root`, which may be null. What has been removed lives
/// until its dispatch has unwound.
bool IsIn(const Control& control, const Container* root);

/// Whether a finger on the middle of `button` would be on it, and it would listen.
bool IsReachable(const Controls::Button& button, Container& root);

/// The button after `current` in `root`, from top to bottom and from left to right, and around the
/// end; backward, the one before. Only those that are reachable count. The first, or the last, when
/// `current` is null or does not count; null when none does.
Controls::Button* NextButton(Container& root, const Control* current, bool backward);

}  // namespace Osp::Ui
