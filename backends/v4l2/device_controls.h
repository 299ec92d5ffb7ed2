// The controls of a device that streams, worked without waiting for it.
#pragma once

#include <array>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "backends/v4l2/v4l2_controls.h"
#include "osp/base/serial_worker.h"
#include "osp/media/live/video_source.h"

namespace Osp::Media {

/// Belongs to a source of video. Loop thread only; the device is asked on a thread of its own, for
/// it may take a second to answer, and more when it is being unplugged.
class DeviceControls {
  public:
    explicit DeviceControls(std::string lights = "/sys/class/leds") : lights_(std::move(lights)) {}
    ~DeviceControls() { Close(); }

    /// Begins to look what the device behind `file` can do; an empty name is of a device that has
    /// no controls of its own.
    void Open(const std::string& file);
    /// Waits until that is known, until `limit` at most.
    void WaitUntilKnown(std::chrono::steady_clock::time_point limit);
    /// Everything goes back to what it was.
    void Close();

    /// What the device could do when it was opened last: none before.
    bool Has(VideoControl control) const;
    /// Begins to set it. The flash alone may be set while closed, for the next Open: it is switched
    /// on before the pictures begin to come.
    result Set(VideoControl control, int value);

  private:
    static constexpr std::size_t kControls = 4;
    static std::size_t IndexOf(VideoControl control) { return static_cast<std::size_t>(control); }

    const std::string lights_;
    bool isOpen_ = false;
    bool isFlashWanted_ = false;

    mutable std::mutex mutex_;  // guards what follows
    std::condition_variable known_;
    bool isKnown_ = false;
    std::array<bool, kControls> has_{};

    std::unique_ptr<V4l2Controls> device_;  // the worker's thread
    Base::SerialWorker worker_;             // last: its jobs use the others
};

}  // namespace Osp::Media
