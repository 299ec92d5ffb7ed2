// What a player is doing.
#pragma once

namespace Osp::Media {

enum class PlayerState { kInitial = 0, kOpened = 1, kStopped = 4, kPlaying = 5 };

}  // namespace Osp::Media
