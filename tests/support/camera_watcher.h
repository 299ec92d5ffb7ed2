// A stream that looks at what a camera sends, as it comes.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <pipewire/pipewire.h>
#include <string>
#include <vector>

#include "osp/base/owner.h"
#include "tests/support/virtual_camera/mode.h"

namespace Osp::Testing {

struct SeenFrame {
    Mode mode;
    std::vector<std::uint8_t> bytes;  // as many as the buffer claims
    int strideBytes;
    bool isCorrupted;
    int sequence;                  // by its header
    std::chrono::nanoseconds age;  // at its arrival
};

/// Everything happens in Collect, on the caller's thread.
class CameraWatcher {
  public:
    /// Takes the first of the modes that the camera has.
    CameraWatcher(const std::string& camera, const std::vector<Mode>& modes);
    CameraWatcher(const CameraWatcher&) = delete;
    CameraWatcher& operator=(const CameraWatcher&) = delete;

    /// The frames from now on until there are `count` or the time is over; those that come
    /// together are not parted.
    std::vector<SeenFrame> Collect(std::size_t count,
                                   std::chrono::milliseconds limit = std::chrono::seconds(5));

  private:
    static const pw_stream_events kEvents;

    void OnProcess();

    Base::Owner<pw_main_loop, pw_main_loop_destroy> mainLoop_;
    Base::Owner<pw_context, pw_context_destroy> context_;
    Base::Owner<pw_core, pw_core_disconnect> core_;
    spa_hook listener_{};
    Base::Owner<pw_stream, pw_stream_destroy> stream_;
    std::optional<Mode> mode_;
    std::vector<SeenFrame> seen_;
};

}  // namespace Osp::Testing
