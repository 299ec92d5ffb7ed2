// How long it takes from a touch until it is seen: the window on a private X server, software
// rendering, a camera that shows a still picture.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/pictures/subjects.h"
#include "tests/support/programs/program.h"
#include "tests/support/programs/x_server.h"

namespace {

using namespace Kivo::Testing;
using SteadyClock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr int kTouches = 41;

// The button whose touch darkens the whole screen, and a place that nothing else covers.
constexpr int kButtonX = 264;
constexpr int kButtonY = 425;
constexpr int kSeenX = 300;
constexpr int kSeenY = 100;

double TouchMs(XServer& x) {
    const unsigned long before = x.PixelAt(kSeenX, kSeenY);
    const auto begin = SteadyClock::now();
    x.Press();
    while (x.PixelAt(kSeenX, kSeenY) == before) {
        if (SteadyClock::now() - begin > 2s) {
            std::fputs("touch-bench: a touch was not seen\n", stderr);
            std::exit(1);
        }
    }
    const std::chrono::duration<double, std::milli> elapsed = SteadyClock::now() - begin;
    x.Release();
    std::this_thread::sleep_for(313ms);  // at every phase of the frames
    return elapsed.count();
}

}  // namespace

int main() {
    const Subjects subjects(1);
    const Osp::Testing::TemporaryFolder data;
    XServer x;
    CameraProgram camera({"--script", "-", "--data", data.Path(), "--primary", subjects.Source(),
                          "--secondary", "none"},
                         {{"DISPLAY", x.Name()},
                          {"GDK_BACKEND", "x11"},
                          {"DBUS_SESSION_BUS_ADDRESS", "disabled:"},
                          {"GTK_A11Y", "none"}});
    camera.Send("await preview");
    camera.Send("wait 500");
    camera.Send("print sounds");
    if (x.FindWindow("KIVO Camera") == 0 || camera.ReadLine().empty()) return 1;
    x.MoveTo(kButtonX, kButtonY);
    std::vector<double> times(kTouches);
    std::ranges::generate(times, [&x] { return TouchMs(x); });
    std::ranges::sort(times);
    std::printf("touch to pixel, %d touches: %.1f ms median, %.1f ms at most\n", kTouches,
                times[times.size() / 2], times.back());
    return camera.Finish().exitCode;
}
