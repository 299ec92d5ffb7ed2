// The photo wall as a page.
#pragma once

#include <functional>
#include <span>

#include <osp/base/string.h>

#include "share/wall/wall_scan.h"

namespace Kivo {

/// A mosaic of `items`, any number of which may be in several cells or in none; without any, the
/// empty wall. `rand` gives numbers from 0 on: the first is for the mosaic, the others are for its
/// cells, one each.
Osp::Base::String ComposeWall(std::span<const WallItem> items, const std::function<int()>& rand);
/// Nothing but the title.
Osp::Base::String ComposeEmptyWall();

}  // namespace Kivo
