// How a form wants to be turned.
#pragma once

namespace Osp::Ui {

enum class Orientation { kNone = 0, kPortrait = 1, kLandscape = 2 };

}  // namespace Osp::Ui
