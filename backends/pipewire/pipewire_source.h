// One camera of PipeWire's.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <pipewire/pipewire.h>
#include <string>
#include <vector>

#include "backends/pipewire/pipewire_connection.h"
#include "backends/v4l2/device_controls.h"
#include "osp/base/owner.h"
#include "osp/media/live/video_source.h"

namespace Osp::Media {

/// Bound to an id, whether such a camera is there or not; an empty id is whichever comes first.
class PipewireSource : public VideoSource, private PipewireConnection::Observer {
  public:
    /// `connection` outlives the source.
    PipewireSource(PipewireConnection& connection, std::string id);
    ~PipewireSource() override;

    bool IsThere() const override;
    void Watch(std::function<void()> changed) override;
    std::vector<VideoMode> Modes() const override;
    result Start(const VideoMode& mode, std::shared_ptr<VideoSink> sink) override;
    void Stop() override;
    bool Has(VideoControl control) const override { return controls_.Has(control); }
    result Set(VideoControl control, int value) override { return controls_.Set(control, value); }

  private:
    static const pw_stream_events kEvents;

    void OnCamerasChanged() override;
    void OnDisconnected() override;
    const PipewireCamera* Camera() const;
    bool Connect(const PipewireCamera& camera, const VideoMode& mode);
    result AwaitAnswer(std::chrono::steady_clock::time_point limit);
    bool IsTaken() const;
    void OnStateChanged(pw_stream_state state, const char* error);
    void OnFormat(const spa_pod* parameter);
    void OnProcess();
    void HandOver(const spa_buffer& buffer);
    void End();

    PipewireConnection& connection_;
    const std::string id_;
    DeviceControls controls_;  // loop thread

    // Guarded by the connection's lock.
    std::function<void()> changed_;
    bool wasThere_ = false;
    Base::Owner<pw_stream, pw_stream_destroy> stream_;
    spa_hook hook_{};
    std::shared_ptr<VideoSink> sink_;  // null while no stream is delivered
    std::uint32_t nodeId_ = 0;         // of the camera that streams
    VideoMode format_;                 // agreed upon; no size before
    pw_stream_state state_ = PW_STREAM_STATE_UNCONNECTED;
    std::string error_;
};

}  // namespace Osp::Media
