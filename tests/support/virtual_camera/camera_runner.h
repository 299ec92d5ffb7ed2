// The camera as a whole: it stays connected to the daemon and does what it is told.
#pragma once

#include <memory>
#include <pipewire/pipewire.h>
#include <string>

#include "osp/base/owner.h"
#include "tests/support/virtual_camera/behaviour.h"
#include "tests/support/virtual_camera/camera_node.h"

namespace Osp::Testing {

class CameraRunner {
  public:
    explicit CameraRunner(NodeOptions options);
    CameraRunner(const CameraRunner&) = delete;
    CameraRunner& operator=(const CameraRunner&) = delete;

    /// One command; false, and nothing happens, when it is none.
    bool Do(const std::string& line);
    /// Does the commands from standard input until its end or `end`. The exit code.
    int Run();

  private:
    static const pw_core_events kCoreEvents;

    void Connect();
    void OnCoreError(std::uint32_t id, int result);
    void MakeNode();
    bool Resize(const std::string& text);
    void Fail(std::string text);
    void OnInput();
    void Quit(int exitCode);

    NodeOptions options_;
    Behaviour behaviour_;
    bool isGone_ = false;   // told to vanish
    bool isOther_ = false;  // offers what it was told to in mid-stream
    unsigned lastNumber_ = 0;
    int exitCode_ = 0;
    std::string input_;  // not yet a whole line
    Base::Owner<pw_main_loop, pw_main_loop_destroy> mainLoop_;
    pw_loop* loop_;  // the main loop's
    Base::Owner<pw_context, pw_context_destroy> context_;
    spa_source* connectTimer_;  // the loop's
    spa_hook listener_{};
    Base::Owner<pw_core, pw_core_disconnect> core_;
    std::unique_ptr<CameraNode> node_;
};

}  // namespace Osp::Testing
