// The daemon may be killed at any time. The core says so in an event, in which it must not be
// disconnected; so the timer that tries for a new connection first takes the old one down.
#include "tests/support/virtual_camera/camera_runner.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>
#include <utility>

namespace Osp::Testing {

namespace {

constexpr long kRetryNs = 50'000'000;
constexpr int kExitUsage = 2;

void Arm(pw_loop* loop, spa_source* timer, long delayNs) {
    timespec delay{0, delayNs};
    pw_loop_update_timer(loop, timer, &delay, nullptr, false);
}

}  // namespace

const pw_core_events CameraRunner::kCoreEvents = [] {
    pw_core_events events{};
    events.version = PW_VERSION_CORE_EVENTS;
    events.error = [](void* runner, std::uint32_t id, int, int result, const char*) {
        static_cast<CameraRunner*>(runner)->OnCoreError(id, result);
    };
    return events;
}();

CameraRunner::CameraRunner(NodeOptions options)
    : options_(std::move(options)),
      mainLoop_(pw_main_loop_new(nullptr)),
      loop_(pw_main_loop_get_loop(mainLoop_.get())),
      context_(pw_context_new(loop_, nullptr, 0)),
      connectTimer_(pw_loop_add_timer(
          loop_, [](void* runner, std::uint64_t) { static_cast<CameraRunner*>(runner)->Connect(); },
          this)) {
    pw_loop_add_io(
        loop_, STDIN_FILENO, SPA_IO_IN | SPA_IO_HUP, false,
        [](void* runner, int, std::uint32_t) { static_cast<CameraRunner*>(runner)->OnInput(); },
        this);
}

int CameraRunner::Run() {
    Arm(loop_, connectTimer_, 1);
    pw_main_loop_run(mainLoop_.get());
    return exitCode_;
}

void CameraRunner::Connect() {
    node_.reset();
    core_.reset(pw_context_connect(context_.get(), nullptr, 0));
    if (core_ == nullptr) {
        Arm(loop_, connectTimer_, kRetryNs);
        return;
    }
    listener_ = {};
    pw_core_add_listener(core_.get(), &listener_, &kCoreEvents, this);
    if (!isGone_) MakeNode();
}

void CameraRunner::OnCoreError(std::uint32_t id, int result) {
    if (id != PW_ID_CORE || result != -EPIPE) return;
    std::puts("lost");
    Arm(loop_, connectTimer_, kRetryNs);
}

void CameraRunner::MakeNode() {
    isGone_ = false;
    isOther_ = false;
    node_.reset();  // before there is another one of this name
    if (core_ != nullptr) {
        node_ = std::make_unique<CameraNode>(core_.get(), options_, behaviour_, lastNumber_);
    }
}

bool CameraRunner::Do(const std::string& line) {
    const std::size_t space = std::min(line.find(' '), line.size());
    const std::string word = line.substr(0, space);
    const std::string argument = space == line.size() ? "" : line.substr(space + 1);
    if (word == "size") return Resize(argument);
    if (word == "error") {
        Fail(argument);
    } else if (line == "vanish") {
        isGone_ = true;
        node_.reset();
        std::puts("gone");
    } else if (line == "return") {
        MakeNode();
    } else if (line == "end") {
        Quit(0);
    } else {
        if (!Change(behaviour_, word, argument)) return false;
        if (word != "ok" || !isOther_) return true;
        isOther_ = false;
        if (node_) node_->Offer(options_.modes);
    }
    return true;
}

bool CameraRunner::Resize(const std::string& text) {
    const auto size = ParseSize(text);
    if (!size) return false;
    std::vector<Mode> modes = options_.modes;
    for (Mode& mode : modes) {
        mode.width = size->width;
        mode.height = size->height;
    }
    isOther_ = true;
    if (node_) node_->Offer(modes);
    return true;
}

void CameraRunner::Fail(std::string text) {
    int error = -EBUSY;
    char* end = nullptr;
    const long number = std::strtol(text.c_str(), &end, 10);
    if (number < 0) {
        error = static_cast<int>(number);
        text = *end == ' ' ? end + 1 : end;
    }
    if (node_) node_->Fail(error, text);
}

void CameraRunner::OnInput() {
    char block[256];
    const ssize_t count = read(STDIN_FILENO, block, sizeof block);
    if (count <= 0) {
        Quit(0);  // whoever gave the commands is gone
        return;
    }
    input_.append(block, static_cast<std::size_t>(count));
    for (std::size_t end = 0; (end = input_.find('\n')) != std::string::npos;) {
        const std::string line = input_.substr(0, end);
        input_.erase(0, end + 1);
        if (Do(line)) continue;
        std::fprintf(stderr, "virtual-camera: this is no command: %s\n", line.c_str());
        Quit(kExitUsage);
        return;
    }
}

void CameraRunner::Quit(int exitCode) {
    exitCode_ = exitCode;
    pw_main_loop_quit(mainLoop_.get());
}

}  // namespace Osp::Testing
