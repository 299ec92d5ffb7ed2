// How long a photograph takes from the camera key until it is stored, and until the preview is
// back: the whole program, headless, with the built-in scene under the real clock.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "bench/camera_run.h"
#include "osp/base/trace.h"

namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr int kPhotographs = 61;
constexpr int kPauseMs = 150;

struct Stage {
    const char* mark;  // that ends it
    const char* name;
};
constexpr Stage kStages[] = {
    {"focus-done", "focus"},    {"capture-delivered", "wait for the frame"},
    {"decode-done", "decode"},  {"encode-begun", "effect"},
    {"encode-done", "encode"},  {"file-synced", "write and sync"},
    {"registered", "register"}, {"preview-first-frame", "restart"}};

/// Collects how long each stage of each photograph took.
class StageTimes : public Osp::Base::Trace {
  public:
    void Begin() { last_ = begin_ = SteadyClock::now(); }

    void OnMark(const char* mark) override {
        if (begin_ == SteadyClock::time_point{}) return;  // the preview at the start
        const bool isStage = std::ranges::any_of(
            kStages, [mark](const Stage& stage) { return std::string_view(stage.mark) == mark; });
        if (!isStage) return;
        const auto now = SteadyClock::now();
        times_[mark].push_back(Milliseconds(now - last_));
        if (std::string(mark) == "registered") stored_.push_back(Milliseconds(now - begin_));
        last_ = now;
    }

    void Print() {
        for (const Stage& stage : kStages) Print(stage.name, times_[stage.mark]);
        Print("key to stored and registered", stored_);
    }

  private:
    using Times = std::vector<double>;

    static double Milliseconds(SteadyClock::duration d) {
        return std::chrono::duration<double, std::milli>(d).count();
    }
    static void Print(const char* name, Times& times) {
        if (times.size() != kPhotographs) {
            std::fprintf(stderr, "photo-bench: %zu times of \"%s\"\n", times.size(), name);
            std::exit(1);
        }
        std::ranges::sort(times);
        std::printf("%-30s %7.2f ms median %7.2f ms at most\n", name, times[times.size() / 2],
                    times.back());
    }

    SteadyClock::time_point begin_;
    SteadyClock::time_point last_;
    std::map<std::string, Times> times_;
    Times stored_;
};

}  // namespace

int main() {
    StageTimes times;
    const Osp::Base::Trace::Installed installed(times);
    Host::ScriptQueue queue;
    queue.Add({"await preview", 0, nullptr});
    for (int i = 1; i <= kPhotographs; ++i) {
        queue.Add(
            {"wait " + std::to_string(kPauseMs), 0, [&times](const auto&) { times.Begin(); }});
        queue.Add({"key camera", 0, nullptr});
        queue.Add({"await photos " + std::to_string(i), 0, nullptr});
    }
    queue.Add({"wait 500", 0, nullptr});
    queue.Close();
    if (Bench::RunCamera(Host::ClockKind::kReal, queue) != 0) return 1;
    std::printf("KIVO Normal, 1280 x 960, scene, real clock, %d photographs\n", kPhotographs);
    times.Print();
    return 0;
}
