// What a camera's own hardware does, set through the kernel.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>

#include "backends/v4l2/control_node.h"
#include "backends/v4l2/flash_led.h"
#include "osp/media/live/video_source.h"

namespace Osp::Media {

/// Talks to the device in every call, which may take long. What has been changed goes back to what
/// it was when the object ends: a camera keeps its settings, and the next program would not know.
class V4l2Controls {
  public:
    /// `node` may be null: then the light is all there is.
    explicit V4l2Controls(std::unique_ptr<ControlNode> node,
                          const std::filesystem::path& lights = "/sys/class/leds");
    ~V4l2Controls();
    V4l2Controls(const V4l2Controls&) = delete;
    V4l2Controls& operator=(const V4l2Controls&) = delete;

    bool Has(VideoControl control) const;
    /// As VideoSource::Set. kIo when the device refuses what it claims to have.
    result Set(VideoControl control, int value);

  private:
    struct Range {
        int least = 0;
        int most = 0;
        int step = 1;
    };

    std::optional<Range> Look(std::uint32_t id);
    bool Put(std::uint32_t id, int value);
    result SetZoom(int step);
    result SetWhiteBalance(int balance);
    result SetFlash(bool isOn);

    const std::unique_ptr<ControlNode> node_;
    FlashLed led_;
    std::optional<Range> zoom_;
    std::optional<Range> temperature_;
    bool hasFocus_ = false;
    bool hasTorch_ = false;
    std::map<std::uint32_t, int> before_;  // of what was changed
};

}  // namespace Osp::Media
