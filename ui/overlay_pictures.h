// The bitmaps of the camera screen.
#pragma once

#include <array>
#include <cstddef>

#include <osp/base/result.h>
#include <osp/graphics/bitmap.h>
#include <osp/media/image.h>

namespace Kivo {

/// A run of bitmaps in the table: one for each value of a setting or state of a control.
struct PictureGroup {
    std::size_t first;
    std::size_t count;
};

inline constexpr PictureGroup kLogoPicture{0, 1};
inline constexpr PictureGroup kCapturePictures{1, 2};  // idle, pressed
inline constexpr PictureGroup kQuadPictures{3, 5};     // by shots taken
inline constexpr PictureGroup kActionPictures{8, 5};
inline constexpr PictureGroup kMixPictures{13, 3};
inline constexpr PictureGroup kCameraTypePictures{16, 6};
inline constexpr PictureGroup kSelectionPictures{22, 2};  // back, front
inline constexpr PictureGroup kAlbumPicture{24, 1};
inline constexpr PictureGroup kFlashPictures{25, 2};  // off, on
inline constexpr PictureGroup kWhiteBalancePictures{27, 5};
inline constexpr PictureGroup kZoomPictures{32, 7};
inline constexpr PictureGroup kRollPictures{39, 10};
inline constexpr PictureGroup kDimmedRollPictures{49, 10};
inline constexpr PictureGroup kFocusPictures{59, 2};  // searching, focused
inline constexpr PictureGroup kHdrPictures{61, 2};    // off, on
inline constexpr PictureGroup kInfoPicture{63, 1};
inline constexpr PictureGroup kSmallCapturePictures{64, 2};  // idle, pressed
inline constexpr PictureGroup kSettingsPicture{66, 1};
inline constexpr std::size_t kOverlayPictureCount = 67;

class OverlayPictures {
  public:
    /// Decodes all bitmaps; the first failure is returned.
    result Load(Osp::Media::Image& decoder);

    /// The bitmap of value `index`; a value that has none shows the first of its group.
    const Osp::Graphics::Bitmap& Get(const PictureGroup& group, int index = 0) const;

  private:
    std::array<Osp::Graphics::Bitmap, kOverlayPictureCount> bitmaps_;
};

}  // namespace Kivo
