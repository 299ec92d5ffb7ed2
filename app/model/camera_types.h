// The camera's modes and the names they carry in photo descriptions.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Kivo {

/// Shooting modes. Stored settings and descriptions rely on the numbering.
enum class CameraType : std::uint8_t {
    kKivo = 0,
    kDslr = 1,
    kAction = 2,
    kQuad = 3,
    kMix = 4,
    kTiltShift = 5,
};

enum class PhotoEffect : std::uint8_t {
    kNormal = 0,
    kFisheye = 1,
    kConcave = 2,
    kBlackWhite = 3,
    kBeach = 4,
    kFall = 5,
    kSepia = 6,
    kNegative = 7,
    kEdge = 8,
    kMirror = 9,
};

enum class FlashState : std::uint8_t { kOn = 0, kOff = 1 };

/// The number of camera zoom steps from the widest view.
enum class ZoomLevel : std::uint8_t {
    k1X = 0,
    k1_5X = 1,
    k2X = 2,
    k2_5X = 3,
    k3X = 4,
    k3_5X = 5,
    k4X = 6,
};

enum class StorageType : std::uint8_t { kPhone = 0, kMemoryCard = 1 };

/// The others have no Fisheye, Concave and Mirror.
constexpr bool OffersAllEffects(CameraType type) {
    return type == CameraType::kKivo || type == CameraType::kDslr;
}

/// Tilt-shift is written "TILT", not by its short name.
inline constexpr std::array<std::string_view, 6> kCameraTypeNames{"KIVO", "DSLR", "ACTION",
                                                                  "QUAD", "MIX",  "TILT"};
inline constexpr std::array<std::string_view, 10> kPhotoEffectNames{
    "Normal", "Fisheye", "Concave", "B&W", "Beach", "Fall", "Sepia", "Negative", "Edge", "Mirror"};
inline constexpr std::array<std::string_view, 7> kZoomLevelLabels{"1X", "1.5X", "2X", "2.5X",
                                                                  "3X", "3.5X", "4X"};

static_assert(kCameraTypeNames.size() == std::size_t{static_cast<int>(CameraType::kTiltShift)} + 1);
static_assert(kPhotoEffectNames.size() == std::size_t{static_cast<int>(PhotoEffect::kMirror)} + 1);
static_assert(kZoomLevelLabels.size() == std::size_t{static_cast<int>(ZoomLevel::k4X)} + 1);

/// The entry of `value` in a table of names; a value outside the table reads as its first entry,
/// because a dragged roll and a damaged registry can leave any byte in a setting.
template <class Enum, std::size_t size>
constexpr std::string_view NameIn(const std::array<std::string_view, size>& names, Enum value) {
    const auto index = static_cast<std::size_t>(value);
    return names[index < size ? index : 0];
}

/// The effect of that number; Normal for one that no effect has.
constexpr PhotoEffect KnownEffect(std::size_t value) {
    return value < kPhotoEffectNames.size() ? static_cast<PhotoEffect>(value)
                                            : PhotoEffect::kNormal;
}

constexpr std::string_view NameOf(CameraType type) {
    return NameIn(kCameraTypeNames, type);
}
constexpr std::string_view NameOf(PhotoEffect effect) {
    return NameIn(kPhotoEffectNames, effect);
}
constexpr std::string_view LabelOf(ZoomLevel level) {
    return NameIn(kZoomLevelLabels, level);
}

}  // namespace Kivo
