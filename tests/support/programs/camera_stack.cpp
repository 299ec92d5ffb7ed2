#include "tests/support/programs/camera_stack.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>

#include "tests/support/programs/program.h"

namespace Osp::Testing {

namespace {

using namespace std::chrono_literals;

constexpr auto kLimit = 10s;

std::vector<std::string> CameraWords(const std::string& name,
                                     const std::vector<std::string>& options) {
    std::vector<std::string> words{Kivo::Testing::ProgramFolder() + "/virtual-camera", "--name",
                                   name};
    words.insert(words.end(), options.begin(), options.end());
    return words;
}

}  // namespace

CameraStack::CameraStack() {
    for (const char* name : {"XDG_RUNTIME_DIR", "PIPEWIRE_RUNTIME_DIR", "XDG_STATE_HOME"}) {
        setenv(name, folder_.Path().c_str(), 1);
    }
    setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
    setenv("WIREPLUMBER_CONFIG_DIR", KIVO_CAMERA_STACK, 1);
    Start();
}

CameraStack::~CameraStack() {
    // In this order: a session manager that loses its daemon complains.
    sessionManager_.reset();
    daemon_.reset();
}

void CameraStack::Start() {
    if (!daemon_) StartDaemon();
    if (!sessionManager_) StartSessionManager();
}

void CameraStack::StartDaemon() {
    daemon_ = std::make_unique<Process>(
        std::vector<std::string>{"pipewire", "-c", KIVO_CAMERA_STACK "/pipewire.conf"});
    // A socket that a killed one has left is there before the new one listens.
    EXPECT_TRUE(Within(kLimit, [] {
        return OutputOf({"pw-cli", "ls", "Core"}).find("pipewire-0") != std::string::npos;
    })) << "the daemon does not answer";
}

void CameraStack::StartSessionManager() {
    sessionManager_ = std::make_unique<Process>(
        std::vector<std::string>{"wireplumber", "-c", "wireplumber.conf"});
    // It makes these metadata itself.
    EXPECT_TRUE(Within(kLimit, [] {
        return OutputOf({"pw-cli", "ls", "Metadata"}).find("\"default\"") != std::string::npos;
    })) << "the session manager is not there";
}

void CameraStack::KillDaemon() {
    daemon_->End(SIGKILL);
    daemon_.reset();
    EXPECT_TRUE(Within(kLimit, [this] { return !sessionManager_ || sessionManager_->HasEnded(); }))
        << "the session manager outlives its daemon";
    sessionManager_.reset();
}

void CameraStack::KillSessionManager() {
    sessionManager_->End(SIGKILL);
    sessionManager_.reset();
}

VirtualCamera::VirtualCamera(const std::string& name, const std::vector<std::string>& options)
    : process_(CameraWords(name, options), Process::Pipes::kInputAndOutput) {
    AwaitReady();
}

std::optional<std::string> VirtualCamera::Next(const std::string& beginning,
                                               std::chrono::milliseconds limit) {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + limit;
    while (const auto line = process_.ReadLine(
               std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()))) {
        if (line->starts_with(beginning)) return line->substr(beginning.size());
    }
    return {};
}

std::string VirtualCamera::Await(const std::string& beginning, std::chrono::milliseconds limit) {
    const auto rest = Next(beginning, limit);
    EXPECT_TRUE(rest) << "the virtual camera does not say: " << beginning;
    return rest.value_or("");
}

bool VirtualCamera::Says(const std::string& beginning, std::chrono::milliseconds limit) {
    return Next(beginning, limit).has_value();
}

void VirtualCamera::Vanish() {
    Send("vanish");
    Await("gone");
}

void VirtualCamera::Return() {
    Send("return");
    AwaitReady();
}

void VirtualCamera::AwaitReady() {
    id_ = static_cast<unsigned>(std::atoi(Await("ready ").c_str()));
}

}  // namespace Osp::Testing
