// Cameras without hardware: a private PipeWire daemon with its session manager, and virtual
// cameras in it.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/programs/process.h"
#include "tests/support/temporary_folder.h"

namespace Osp::Testing {

/// While it lives, this process and those that it starts find this daemon and no other, and no
/// session bus.
class CameraStack {
  public:
    /// Both are ready, or the test has failed.
    CameraStack();
    /// What the environment was before is not restored: no other test shall meet a real daemon.
    ~CameraStack();
    CameraStack(const CameraStack&) = delete;
    CameraStack& operator=(const CameraStack&) = delete;

    /// Kills the daemon; the session manager ends by that.
    void KillDaemon();
    /// Kills the session manager only: nothing new is linked any more.
    void KillSessionManager();
    /// Starts what is not running, and waits until it is ready.
    void Start();

  private:
    void StartDaemon();
    void StartSessionManager();

    TemporaryFolder folder_;
    std::unique_ptr<Process> daemon_;
    std::unique_ptr<Process> sessionManager_;
};

/// The program of that name with a node in the graph. Its commands and what it prints are described
/// in tests/support/virtual_camera/main.cpp.
class VirtualCamera {
  public:
    /// `options` beside the name. Waits until it is ready.
    explicit VirtualCamera(const std::string& name, const std::vector<std::string>& options = {});

    /// Of the node that was made last.
    unsigned Id() const { return id_; }
    void Send(const std::string& command) { process_.Send(command); }
    /// Skips what is printed before a line that begins with `beginning`, and returns its rest.
    /// Fails the test when none comes in time.
    std::string Await(const std::string& beginning,
                      std::chrono::milliseconds limit = std::chrono::seconds(5));
    /// Whether such a line comes within that time.
    bool Says(const std::string& beginning, std::chrono::milliseconds limit);
    void Vanish();
    void Return();
    /// Waits until it is back in the graph of a new daemon.
    void AwaitReady();
    /// The whole program, as if it had crashed.
    void Kill() { process_.End(SIGKILL); }

  private:
    std::optional<std::string> Next(const std::string& beginning, std::chrono::milliseconds limit);

    Process process_;
    unsigned id_ = 0;
};

}  // namespace Osp::Testing
