// The light beside a camera.
#pragma once

#include <filesystem>

namespace Osp::Media {

/// The first of the machine's lights that is a torch, or else a flash, and that we may switch.
class FlashLed {
  public:
    explicit FlashLed(const std::filesystem::path& lights = "/sys/class/leds");
    /// Out if it was switched on here.
    ~FlashLed();
    FlashLed(const FlashLed&) = delete;
    FlashLed& operator=(const FlashLed&) = delete;

    bool IsThere() const { return !light_.empty(); }
    /// As bright as it gets. False when the system refuses.
    bool Switch(bool isOn);

  private:
    std::filesystem::path light_;
    bool isOn_ = false;
};

}  // namespace Osp::Media
