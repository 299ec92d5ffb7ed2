// The one settings object of the program.
#pragma once

#include <vector>

#include <osp/graphics/dimension.h>
#include <osp/media/camera_selection.h>
#include <osp/media/camera_white_balance.h>

#include "app/model/camera_types.h"

namespace Kivo {

/// The one that a press of the white-balance button leads to.
constexpr Osp::Media::CameraWhiteBalance NextWhiteBalance(Osp::Media::CameraWhiteBalance balance) {
    using Osp::Media::CameraWhiteBalance;
    return balance >= CameraWhiteBalance::kTungsten
               ? CameraWhiteBalance::kAuto
               : static_cast<CameraWhiteBalance>(static_cast<int>(balance) + 1);
}

/// What the user has chosen, and the capture sizes of the camera in use. The camera form owns it;
/// overlay and forms share it by pointer. Every setter changes exactly its own field. Loop thread
/// only.
class CameraSetting {
  public:
    CameraSetting();
    virtual ~CameraSetting() = default;

    Osp::Media::CameraSelection GetCameraSelection() const { return cameraSelection_; }
    void SetCameraSelection(Osp::Media::CameraSelection selection) { cameraSelection_ = selection; }

    CameraType GetCameraType() const { return cameraType_; }
    void SetCameraType(CameraType type) { cameraType_ = type; }

    PhotoEffect GetPhotoEffect() const { return photoEffect_; }
    void SetPhotoEffect(PhotoEffect effect) { photoEffect_ = effect; }

    FlashState GetFlashState() const { return flashState_; }
    void SetFlashState(FlashState state) { flashState_ = state; }

    Osp::Media::CameraWhiteBalance GetWhiteBalance() const { return whiteBalance_; }
    void SetWhiteBalance(Osp::Media::CameraWhiteBalance balance) { whiteBalance_ = balance; }

    ZoomLevel GetZoomLevel() const { return zoomLevel_; }
    void SetZoomLevel(ZoomLevel level) { zoomLevel_ = level; }

    /// Whether the live image is blended with the first frame of a MIX photograph.
    bool IsPreviewEnabled() const { return isPreviewEnabled_; }
    void EnablePreview(bool enable) { isPreviewEnabled_ = enable; }

    /// Whether every photograph is stored a second time with HDR.
    bool IsHdrEnabled() const { return isHdrEnabled_; }
    void EnableHdr(bool enable) { isHdrEnabled_ = enable; }

    /// Whether the device has a second camera.
    bool IsSecondaryEnabled() const { return isSecondaryEnabled_; }
    void EnableSecondary(bool enable) { isSecondaryEnabled_ = enable; }

    bool IsShutterSoundEnabled() const { return isShutterSoundEnabled_; }
    void EnableShutterSound(bool enable) { isShutterSoundEnabled_ = enable; }

    bool IsEffectSoundEnabled() const { return isEffectSoundEnabled_; }
    void EnableEffectSound(bool enable) { isEffectSoundEnabled_ = enable; }

    StorageType GetStorageType() const { return storageType_; }
    void SetStorageType(StorageType type) { storageType_ = type; }

    /// 0 x 0 when none has been chosen.
    Osp::Graphics::Dimension GetCaptureDimension() const { return captureDimension_; }
    void SetCaptureDimension(int width, int height) { captureDimension_ = {width, height}; }

    /// Appends; duplicates are kept.
    void AddSupportResolution(Osp::Graphics::Dimension resolution);
    void ResetSupportResolution();
    /// A copy of the list, the caller's.
    std::vector<Osp::Graphics::Dimension>* GetSupportResolutionListN() const;
    /// The entry that is at least as wide and as high as those before it, the later of equals; an
    /// entry that is wider but lower, or higher but narrower, never replaces an earlier one. 0 x 0
    /// for an empty list.
    Osp::Graphics::Dimension GetMaxSupportResolution() const;

  private:
    Osp::Media::CameraSelection cameraSelection_ = Osp::Media::CameraSelection::kPrimary;
    CameraType cameraType_ = CameraType::kKivo;
    PhotoEffect photoEffect_ = PhotoEffect::kNormal;
    FlashState flashState_ = FlashState::kOn;
    Osp::Media::CameraWhiteBalance whiteBalance_ = Osp::Media::CameraWhiteBalance::kAuto;
    ZoomLevel zoomLevel_ = ZoomLevel::k1X;
    bool isPreviewEnabled_ = false;
    bool isHdrEnabled_ = false;
    bool isSecondaryEnabled_ = true;
    bool isShutterSoundEnabled_ = true;
    bool isEffectSoundEnabled_ = true;
    StorageType storageType_ = StorageType::kPhone;
    Osp::Graphics::Dimension captureDimension_;
    std::vector<Osp::Graphics::Dimension> supportedResolutions_;
};

}  // namespace Kivo
