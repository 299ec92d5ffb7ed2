#include "backends/v4l2/v4l2_controls.h"

#include <algorithm>
#include <iterator>
#include <linux/videodev2.h>
#include <utility>

#include "osp/media/camera/camera_device.h"

// The kernel tells a control's range, but not what its numbers mean. Of zoom it is the focal length
// in units of the maker's: only the ratio to the widest view is known, and only where the range
// does not begin at 0 and reaches four times its beginning can our steps be what they say. All
// other zooms are left to the pictures, where they are exact.

namespace Osp::Media {

namespace {

constexpr int kMostMagnification = 4;
static_assert(2 * kMostMagnification == 2 + kMostZoomSteps);

/// Kelvin, by CameraWhiteBalance; auto has none.
constexpr std::array kTemperatures = {0, 5500, 6500, 4200, 3000};

}  // namespace

V4l2Controls::V4l2Controls(std::unique_ptr<ControlNode> node, const std::filesystem::path& lights)
    : node_(std::move(node)), led_(lights) {
    zoom_ = Look(V4L2_CID_ZOOM_ABSOLUTE);
    if (zoom_ && (zoom_->least <= 0 || zoom_->most / zoom_->least < kMostMagnification)) {
        zoom_.reset();
    }
    if (Look(V4L2_CID_AUTO_WHITE_BALANCE)) temperature_ = Look(V4L2_CID_WHITE_BALANCE_TEMPERATURE);
    hasFocus_ = Look(V4L2_CID_AUTO_FOCUS_START).has_value();
    const auto torch = Look(V4L2_CID_FLASH_LED_MODE);
    hasTorch_ = torch && torch->most >= V4L2_FLASH_LED_MODE_TORCH;
}

// The temperature before the automatic, which would refuse it: it has the greater number.
V4l2Controls::~V4l2Controls() {
    for (auto entry = before_.rbegin(); entry != before_.rend(); ++entry) {
        (void)Put(entry->first, entry->second);
    }
}

bool V4l2Controls::Has(VideoControl control) const {
    switch (control) {
        case VideoControl::kZoom:
            return zoom_.has_value();
        case VideoControl::kWhiteBalance:
            return temperature_.has_value();
        case VideoControl::kFocus:
            return hasFocus_;
        case VideoControl::kFlash:
            return hasTorch_ || led_.IsThere();
    }
    return false;
}

result V4l2Controls::Set(VideoControl control, int value) {
    if (!Has(control)) return result::kUnsupported;
    switch (control) {
        case VideoControl::kZoom:
            return SetZoom(value);
        case VideoControl::kWhiteBalance:
            return SetWhiteBalance(value);
        case VideoControl::kFocus: {
            v4l2_control start{V4L2_CID_AUTO_FOCUS_START, 1};
            return node_->Do(VIDIOC_S_CTRL, &start) ? result::kSuccess : result::kIo;
        }
        case VideoControl::kFlash:
            return SetFlash(value != 0);
    }
    return result::kUnsupported;
}

std::optional<V4l2Controls::Range> V4l2Controls::Look(std::uint32_t id) {
    constexpr std::uint32_t kUseless = V4L2_CTRL_FLAG_DISABLED | V4L2_CTRL_FLAG_READ_ONLY;
    v4l2_queryctrl query{};
    query.id = id;
    if (!node_ || !node_->Do(VIDIOC_QUERYCTRL, &query)) return std::nullopt;
    if ((query.flags & kUseless) != 0) return std::nullopt;
    return Range{query.minimum, query.maximum, std::max(1, query.step)};
}

bool V4l2Controls::Put(std::uint32_t id, int value) {
    v4l2_control before{id, 0};
    if (!before_.contains(id) && node_->Do(VIDIOC_G_CTRL, &before)) before_[id] = before.value;
    v4l2_control control{id, value};
    return node_->Do(VIDIOC_S_CTRL, &control);
}

result V4l2Controls::SetZoom(int step) {
    const int focalLength = zoom_->least * (2 + std::clamp(step, 0, kMostZoomSteps)) / 2;
    const int steps = (focalLength - zoom_->least) / zoom_->step;
    return Put(V4L2_CID_ZOOM_ABSOLUTE, zoom_->least + steps * zoom_->step) ? result::kSuccess
                                                                           : result::kIo;
}

result V4l2Controls::SetWhiteBalance(int balance) {
    if (balance < 0 || balance >= static_cast<int>(std::size(kTemperatures))) {
        return result::kInvalidArgument;
    }
    const int kelvin = kTemperatures[static_cast<std::size_t>(balance)];
    const bool isAutomatic = kelvin == 0;
    if (!Put(V4L2_CID_AUTO_WHITE_BALANCE, isAutomatic ? 1 : 0)) return result::kIo;
    if (isAutomatic) return result::kSuccess;
    const auto [least, most, step] = *temperature_;
    const int steps = (std::clamp(kelvin, least, most) - least) / step;
    return Put(V4L2_CID_WHITE_BALANCE_TEMPERATURE, least + steps * step) ? result::kSuccess
                                                                         : result::kIo;
}

result V4l2Controls::SetFlash(bool isOn) {
    const bool isDone = hasTorch_ ? Put(V4L2_CID_FLASH_LED_MODE,
                                        isOn ? V4L2_FLASH_LED_MODE_TORCH : V4L2_FLASH_LED_MODE_NONE)
                                  : led_.Switch(isOn);
    return isDone ? result::kSuccess : result::kIo;
}

}  // namespace Osp::Media
