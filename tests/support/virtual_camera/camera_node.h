// One video source in the graph: it offers modes, agrees on one and delivers frames.
#pragma once

#include <memory>
#include <optional>
#include <pipewire/pipewire.h>
#include <string>
#include <utility>
#include <vector>

#include "osp/base/owner.h"
#include "tests/support/virtual_camera/behaviour.h"
#include "tests/support/virtual_camera/frame_maker.h"
#include "tests/support/virtual_camera/mode.h"
#include "tests/support/virtual_camera/pacer.h"

namespace Osp::Testing {

struct NodeOptions {
    std::vector<std::pair<std::string, std::string>> properties;
    std::vector<Mode> modes;
    int paddingBytes = 0;  // after each row of raw frames
    bool isVerbose = false;
};

/// Prints what becomes of it on standard output. Everything happens on the core's main loop.
class CameraNode {
  public:
    /// What is handed in outlives it; the frames go on after `lastNumber`.
    CameraNode(pw_core* core, const NodeOptions& options, const Behaviour& behaviour,
               unsigned& lastNumber);
    CameraNode(const CameraNode&) = delete;
    CameraNode& operator=(const CameraNode&) = delete;

    /// A consumer that has another mode has to agree on one of these.
    void Offer(const std::vector<Mode>& modes);
    /// Puts the node into its error state, from which there is no way back. `error` is negative.
    void Fail(int error, const std::string& text);

  private:
    static const pw_stream_events kEvents;

    void OnStateChanged(pw_stream_state before, pw_stream_state state, const char* error);
    void StartStreaming();
    void OnFormatChanged(const spa_pod* format);
    void OnBufferAdded(pw_buffer* buffer);
    void OnProcess();
    void Fill(spa_buffer& buffer, const TakenFrame& frame);

    const NodeOptions& options_;
    const Behaviour& behaviour_;
    std::optional<Mode> mode_;
    std::unique_ptr<FrameMaker> maker_;
    std::optional<TakenFrame> next_;  // on its way
    Pacer pacer_;
    spa_hook listener_{};
    Base::Owner<pw_stream, pw_stream_destroy> stream_;
};

}  // namespace Osp::Testing
