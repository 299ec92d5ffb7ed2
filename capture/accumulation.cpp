#include "capture/main_form.h"
#include "effects/composition.h"
#include "ui/overlay.h"

namespace Kivo {

result MainForm::SaveToCache(const Osp::Base::ByteBuffer& buffer) {
    overlay_->SetFocused(false);
    const CameraType type = setting_->GetCameraType();
    if (type == CameraType::kMix && shotCounter_ == 0) setting_->EnablePreview(true);
    const bool isCached = Effects::CacheFrame(type, !IsPrimary(), shotCounter_, View(buffer),
                                              View(accumulation_), scratch_);
    if (!isCached) return result::kFailure;
    ++shotCounter_;
    return result::kSuccess;
}

}  // namespace Kivo
