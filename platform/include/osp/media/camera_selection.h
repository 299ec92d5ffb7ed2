// Which of the device's cameras.
#pragma once

#include <cstdint>

namespace Osp::Media {

enum class CameraSelection : std::uint8_t {
    kPrimary = 0,    ///< on the back
    kSecondary = 1,  ///< on the front, mounted a quarter turn
};

}  // namespace Osp::Media
