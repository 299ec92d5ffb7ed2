// What a camera of PipeWire's costs beside the least that a program can do with it, and beside the
// built-in scene: first frame after switching on, processor time of the preview, key to stored
// photograph. Everything in one run against one virtual camera on a daemon of its own, so that the
// ratios mean something on a noisy machine.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "bench/camera_run.h"
#include "osp/base/trace.h"
#include "tests/support/programs/camera_stack.h"
#include "tests/support/programs/program.h"

namespace {

using Osp::Testing::CameraStack;
using Osp::Testing::OutputOf;
using Osp::Testing::VirtualCamera;
using Times = std::vector<double>;

constexpr int kRepeats = 31;
constexpr int kPreviewSeconds = 10;
constexpr double kFrameMs = 1000.0 / 30;
constexpr const char* kMode = "I420:1280x960@30";

double NowMs(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

double Median(Times times) {
    if (times.empty()) {
        std::fprintf(stderr, "live-bench: nothing was measured\n");
        std::exit(1);
    }
    std::ranges::sort(times);
    return times[times.size() / 2];
}

/// Measures from Begin to one mark.
class MarkTimes : public Osp::Base::Trace {
  public:
    explicit MarkTimes(std::string_view mark) : mark_(mark) {}
    void Begin() { beginMs_ = NowMs(CLOCK_MONOTONIC); }
    void OnMark(const char* mark) override {
        if (beginMs_ == 0 || mark_ != mark) return;
        times.push_back(NowMs(CLOCK_MONOTONIC) - beginMs_);
        beginMs_ = 0;
    }
    Times times;

  private:
    std::string_view mark_;
    double beginMs_ = 0;
};

using Mark = std::function<void()>;

void Add(
    Host::ScriptQueue& queue, const std::string& line, Mark before = [] {}) {
    queue.Add({line, 0, [before = std::move(before)](const auto&) { before(); }});
}

void Run(const std::string& source, Host::ScriptQueue& queue) {
    queue.Close();
    if (Bench::RunCamera(Host::ClockKind::kReal, queue, source) != 0) std::exit(1);
}

double FirstFrameMs(const std::string& source) {
    MarkTimes times("preview-first-frame");
    const Osp::Base::Trace::Installed installed(times);
    Host::ScriptQueue queue;
    Add(queue, "await preview");
    for (int i = 0; i < kRepeats; ++i) {
        Add(queue, "background");
        Add(queue, "wait 300", [&times] { times.Begin(); });
        Add(queue, "foreground");
        Add(queue, "wait 300");
    }
    Run(source, queue);
    return Median(times.times);
}

double KeyToStoredMs(const std::string& source) {
    MarkTimes times("registered");
    const Osp::Base::Trace::Installed installed(times);
    Host::ScriptQueue queue;
    Add(queue, "await preview");
    for (int i = 1; i <= kRepeats; ++i) {
        // Not in step with the frames.
        Add(queue, "wait " + std::to_string(200 + 7 * i), [&times] { times.Begin(); });
        Add(queue, "key camera");
        Add(queue, "await photos " + std::to_string(i));
    }
    Run(source, queue);
    return Median(times.times);
}

double PreviewProcessorMs(const std::string& source) {
    double begin = 0;
    double end = 0;
    Host::ScriptQueue queue;
    Add(queue, "await preview");
    Add(queue, "wait 1000", [&begin] { begin = NowMs(CLOCK_PROCESS_CPUTIME_ID); });
    Add(queue, "wait " + std::to_string(1000 * kPreviewSeconds),
        [&end] { end = NowMs(CLOCK_PROCESS_CPUTIME_ID); });
    Run(source, queue);
    return (end - begin) / (kPreviewSeconds * 30);
}

double NumberAfter(const std::string& text, const std::string& word) {
    const auto at = text.find(word);
    return at == std::string::npos ? 0 : std::atof(text.c_str() + at + word.size());
}

std::string Consume(int seconds, const std::string& option) {
    return OutputOf({Kivo::Testing::ProgramFolder() + "/plain-camera-consumer", option, "camera",
                     std::to_string(seconds), kMode});
}

}  // namespace

int main() {
    const CameraStack stack;
    const VirtualCamera camera("camera", {"--mode", kMode});
    const std::string source = "pipewire:camera";

    Times consumerFirst;
    for (int i = 0; i < kRepeats; ++i) {
        consumerFirst.push_back(NumberAfter(Consume(1, "--copy"), "first "));
    }
    const double consumer = Median(consumerFirst);
    const double first = FirstFrameMs(source);
    std::printf("switching on to first frame   %6.1f ms, plain consumer %6.1f ms, ratio %.2f\n",
                first, consumer, first / consumer);

    const double preview = PreviewProcessorMs(source);
    for (const char* option : {"--copy", "--show"}) {
        const std::string consumed = Consume(kPreviewSeconds, option);
        const double plain = NumberAfter(consumed, "cpu_ms ") / NumberAfter(consumed, "frames ");
        std::printf("processor time a frame        %6.3f ms, consumer %s  %6.3f ms, ratio %.2f\n",
                    preview, option, plain, preview / plain);
    }

    const double scene = KeyToStoredMs("scene");
    const double photograph = KeyToStoredMs(source);
    std::printf("key to stored and registered  %6.1f ms, scene %15.1f ms, %+.2f frames\n",
                photograph, scene, (photograph - scene) / kFrameMs);
    return 0;
}
