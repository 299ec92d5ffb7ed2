// How long the chooser and the album take to open, the album among few photographs and among many,
// and to show the next one after a swipe, and what a thousand swipes leave in memory. Headless, real
// clock, photographs of 1600x960.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <osp/system/runtime_info.h>

#include "bench/camera_run.h"
#include "osp/io/storage_map.h"
#include "osp/ui/screen.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kOpenings = 20;
constexpr int kSwipes = 1000;
constexpr int kWarmUp = 100;
constexpr double kSlideMs = 100;

double MsSince(Clock::time_point begin) {
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

double Median(std::vector<double> times) {
    std::ranges::sort(times);
    return times.at(times.size() / 2);
}

double MegabytesHeld() {
    long long bytes = 0;
    (void)Osp::System::RuntimeInfo::GetValue("AllocatedMemory", bytes);
    return static_cast<double>(bytes) / 1e6;
}

/// Copies of the first photograph, under the numbers after it.
void Multiply(int count) {
    std::string first;
    if (Osp::Failed(Osp::Io::StorageMap::Current().Resolve("/Media/Images/KIVO0000.jpg",
                                                           Osp::Io::Access::kRead, first))) {
        std::exit(1);
    }
    for (int i = 1; i < count; ++i) {
        char name[32];
        (void)std::snprintf(name, sizeof name, "KIVO%04d.jpg", i);
        std::filesystem::copy_file(first, std::filesystem::path(first).parent_path() / name);
    }
}

struct Figures {
    std::vector<double> choosers;
    std::vector<double> openings;
    std::vector<double> turns;
    double heldBefore = 0;
    double heldAfter = 0;
    Clock::time_point begin;
};

/// With the screen composed, as a window would have it.
void Note(const Figures& figures, std::vector<double>& times) {
    (void)Osp::Ui::Screen::Current().Compose();
    times.push_back(MsSince(figures.begin));
}

void OpenChooser(Host::ScriptQueue& queue, Figures& f) {
    queue.Add({"wait 300", 0, [&](const auto&) { f.begin = Clock::now(); }});
    queue.Add({"tap 60 50", 0, nullptr});
    queue.Add({"await form OptionForm", 0, [&](const auto&) { Note(f, f.choosers); }});
    queue.Add({"key back", 0, nullptr});
    queue.Add({"await preview", 0, nullptr});
}

Figures Measure(int photographs, int swipes) {
    Figures f;
    Host::ScriptQueue queue;
    for (const char* line : {"await preview", "tap 95 425", "await form SettingForm", "wait 100",
                             "tap 410 144", "key back", "await preview"}) {
        queue.Add({line, 0, nullptr});
    }
    for (int i = 0; i < kOpenings; ++i) OpenChooser(queue, f);
    queue.Add({"key camera", 0, nullptr});
    queue.Add({"await photos 1", 0, nullptr});
    queue.Add({"wait 500", 0, [&](const auto&) { Multiply(photographs); }});
    const std::string seen = "await text " + std::to_string(photographs) + " / ";
    for (int i = 0; i < kOpenings; ++i) {
        queue.Add({"wait 300", 0, [&](const auto&) { f.begin = Clock::now(); }});
        queue.Add({"tap 736 425", 0, nullptr});
        queue.Add({seen, 0, [&](const auto&) { Note(f, f.openings); }});
        queue.Add({"wait 100", 0, nullptr});
        if (i + 1 < kOpenings) queue.Add({"key back", 0, nullptr});
        if (i + 1 < kOpenings) queue.Add({"await preview", 0, nullptr});
    }
    for (int i = 0; i < swipes; ++i) {
        const bool isForward = (i / (photographs - 1)) % 2 == 1;
        const int place = i % (photographs - 1);
        const int next = isForward ? place + 2 : photographs - 1 - place;
        queue.Add({isForward ? "key right" : "key left", 0,
                   [&](const auto&) { f.begin = Clock::now(); }});
        queue.Add({"await text jpg, " + std::to_string(next) + " / ", 0, [&, i](const auto&) {
                       Note(f, f.turns);
                       if (i == kWarmUp) f.heldBefore = MegabytesHeld();
                       f.heldAfter = MegabytesHeld();
                   }});
    }
    queue.Close();
    if (Bench::RunCamera(Host::ClockKind::kReal, queue, "scene") != 0) std::exit(1);
    return f;
}

}  // namespace

int main() {
    const Figures few = Measure(50, kSwipes);
    const Figures many = Measure(5000, 0);
    std::printf("the chooser opens             %8.1f ms median\n", Median(few.choosers));
    std::printf("the album opens among 50      %8.1f ms median\n", Median(few.openings));
    std::printf("the chooser opens             %8.1f ms median\n", Median(few.choosers));
    std::printf("the album opens among 5000    %8.1f ms median\n", Median(many.openings));
    std::printf("the next photograph, after the slide %8.1f ms median %8.1f ms at most\n",
                Median(few.turns) - kSlideMs, std::ranges::max(few.turns) - kSlideMs);
    std::printf("held after %d swipes %.1f MB, after %d %.1f MB\n", kWarmUp, few.heldBefore,
                kSwipes, few.heldAfter);
    return 0;
}
