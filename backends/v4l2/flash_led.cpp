#include "backends/v4l2/flash_led.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace Osp::Media {

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> LightsIn(const fs::path& folder) {
    std::error_code error;
    std::vector<fs::path> lights;
    for (fs::directory_iterator i(folder, error), end; !error && i != end; i.increment(error)) {
        lights.push_back(i->path());
    }
    std::ranges::sort(lights);
    return lights;
}

}  // namespace

FlashLed::FlashLed(const fs::path& lights) {
    const std::vector<fs::path> all = LightsIn(lights);
    for (const char* kind : {"torch", "flash"}) {
        for (const fs::path& light : all) {
            if (light.filename().string().find(kind) == std::string::npos) continue;
            if (access((light / "brightness").c_str(), W_OK) != 0) continue;
            light_ = light;
            return;
        }
    }
}

FlashLed::~FlashLed() {
    if (isOn_) (void)Switch(false);
}

bool FlashLed::Switch(bool isOn) {
    if (light_.empty()) return false;
    int brightness = 0;
    if (isOn && !(std::ifstream(light_ / "max_brightness") >> brightness)) brightness = 1;
    std::ofstream stream(light_ / "brightness");
    stream << brightness << std::flush;
    if (!stream) return false;
    isOn_ = isOn;
    return true;
}

}  // namespace Osp::Media
