#include "backends/v4l2/device_controls.h"

#include <initializer_list>
#include <utility>

namespace Osp::Media {

void DeviceControls::Open(const std::string& file) {
    Close();
    isOpen_ = true;
    {
        const std::lock_guard lock(mutex_);
        isKnown_ = false;
    }
    worker_.Post([this, file, wantsFlash = isFlashWanted_] {
        device_ =
            std::make_unique<V4l2Controls>(file.empty() ? nullptr : OpenControlNode(file), lights_);
        if (wantsFlash) (void)device_->Set(VideoControl::kFlash, 1);
        const std::lock_guard lock(mutex_);
        for (const auto control : {VideoControl::kZoom, VideoControl::kWhiteBalance,
                                   VideoControl::kFocus, VideoControl::kFlash}) {
            has_[IndexOf(control)] = device_->Has(control);
        }
        isKnown_ = true;
        known_.notify_all();
    });
}

void DeviceControls::WaitUntilKnown(std::chrono::steady_clock::time_point limit) {
    std::unique_lock lock(mutex_);
    known_.wait_until(lock, limit, [this] { return isKnown_; });
}

void DeviceControls::Close() {
    if (!std::exchange(isOpen_, false)) return;
    worker_.Post([this] { device_.reset(); });
}

bool DeviceControls::Has(VideoControl control) const {
    const std::lock_guard lock(mutex_);
    return has_[IndexOf(control)];
}

result DeviceControls::Set(VideoControl control, int value) {
    if (!Has(control)) return result::kUnsupported;
    if (control == VideoControl::kFlash) isFlashWanted_ = value != 0;
    if (isOpen_) worker_.Post([this, control, value] { (void)device_->Set(control, value); });
    return result::kSuccess;
}

}  // namespace Osp::Media
