// How long a photograph takes from the camera key until it is stored, and until the preview is
// back: the whole program, headless, with the built-in scene under the real clock. Beside what the
// clock says stands the processor time of the loop thread, which other programs do not lengthen.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

#include "bench/camera_run.h"
#include "osp/base/trace.h"

namespace {

constexpr int kPhotographs = 61;
constexpr int kPauseMs = 150;

struct Stage {
    const char* mark;  // that ends it
    const char* name;
};
constexpr Stage kStages[] = {{"focus-done", "focus"},
                             {"capture-delivered", "wait for the frame"},
                             {"decode-begun", "shutter sound, camera off"},
                             {"decode-done", "decode to 32 bits"},
                             {"bmp-made", "to BMP"},
                             {"shown", "to frame, processing picture"},
                             {"folder-listed", "list the folder"},
                             {"bitmap-made", "effect, to bitmap"},
                             {"encode-begun", "number"},
                             {"encode-done", "encode"},
                             {"file-synced", "write and sync"},
                             {"registered", "register"},
                             {"preview-first-frame", "restart"}};

/// Since any time: of the clock, and of the processor in this thread.
struct Moment {
    double clockMs;
    double processorMs;

    static Moment Now() { return {Read(CLOCK_MONOTONIC), Read(CLOCK_THREAD_CPUTIME_ID)}; }
    Moment operator-(const Moment& other) const {
        return {clockMs - other.clockMs, processorMs - other.processorMs};
    }

  private:
    static double Read(clockid_t clock) {
        timespec time{};
        clock_gettime(clock, &time);
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) * 1e-6;
    }
};

/// Collects how long each stage of each photograph took.
class StageTimes : public Osp::Base::Trace {
  public:
    void Begin() {
        begin_ = last_ = Moment::Now();
        next_ = 0;
    }

    /// Marks out of turn are those of other things: the first preview, other screens shown.
    void OnMark(const char* mark) override {
        if (next_ == std::size(kStages) || std::string_view(kStages[next_].mark) != mark) return;
        const Moment now = Moment::Now();
        times_[next_++].push_back(now - last_);
        if (std::string_view(mark) == "registered") stored_.push_back(now - begin_);
        last_ = now;
    }

    void Print() const {
        for (std::size_t i = 0; i < std::size(kStages); ++i) Print(kStages[i].name, times_[i]);
        Print("key to stored and registered", stored_);
    }

  private:
    using Times = std::vector<Moment>;

    static double Median(const Times& times, double Moment::*field) {
        std::vector<double> sorted;
        for (const Moment& time : times) sorted.push_back(time.*field);
        std::ranges::sort(sorted);
        return sorted[sorted.size() / 2];
    }
    static void Print(const char* name, const Times& times) {
        if (times.size() != kPhotographs) {
            std::fprintf(stderr, "photo-bench: %zu times of \"%s\"\n", times.size(), name);
            std::exit(1);
        }
        const double most = std::ranges::max(times, {}, &Moment::clockMs).clockMs;
        std::printf("%-30s %7.2f ms median %7.2f ms at most %7.2f ms of processor time\n", name,
                    Median(times, &Moment::clockMs), most, Median(times, &Moment::processorMs));
    }

    Moment begin_{};
    Moment last_{};
    std::size_t next_ = std::size(kStages);  // the stage that is under way, or beyond them all
    std::array<Times, std::size(kStages)> times_;
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
