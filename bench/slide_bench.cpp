// How late the steps of the album's slide are seen: the window on a private X server, software
// rendering. A step that is skipped counts as seen with the one that is.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "tests/support/pictures/subjects.h"
#include "tests/support/programs/program.h"
#include "tests/support/programs/x_server.h"

namespace {

using namespace Kivo::Testing;
using Clock = std::chrono::steady_clock;

constexpr int kSlides = 40;
constexpr int kSteps = 9;  // before the photograph has gone
constexpr int kStepPixels = 80;
constexpr double kStepMs = 10;
constexpr int kWidth = 800;
constexpr int kBorderY = 58;  // of the print, above the photograph
constexpr unsigned long kPaper = 0xFFFAF5EA;

/// Where the print begins; the width where there is none.
int LeftEdge(XServer& x) {
    const std::vector<unsigned long> row = x.RowAt(kBorderY, kWidth);
    const auto isPaper = [](unsigned long pixel) { return (pixel | 0xFF000000) == kPaper; };
    return static_cast<int>(std::ranges::find_if(row, isPaper) - row.begin());
}

/// How late each step of a slide to the right is seen, after the first, which begins the count.
void Slide(XServer& x, CameraProgram& camera, std::vector<double>& lateMs) {
    const int rest = LeftEdge(x);
    camera.Send("key left");
    Clock::time_point first;
    int seen = 0;
    const auto limit = Clock::now() + std::chrono::seconds(2);
    while (seen < kSteps && Clock::now() < limit) {
        const int step = std::min((LeftEdge(x) - rest) / kStepPixels, kSteps);
        const auto now = Clock::now();
        if (seen == 0 && step > 0) first = now - std::chrono::milliseconds((step - 1) * 10);
        for (; seen < step; ++seen) {
            const std::chrono::duration<double, std::milli> since = now - first;
            lateMs.push_back(since.count() - seen * kStepMs);
        }
    }
    camera.Send("wait 300");
    camera.Send("print sounds");
    (void)camera.ReadLine();
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
    for (int i = 1; i <= kSlides + 1; ++i) {
        camera.Send("await preview");
        camera.Send("wait 200");
        camera.Send("key camera");
        camera.Send("await photos " + std::to_string(i));
    }
    for (const char* line : {"await preview", "wait 300", "tap 736 425", "await form AlbumForm",
                             "wait 500", "print sounds"}) {
        camera.Send(line);
    }
    if (x.FindWindow("KIVO Camera") == 0 || camera.ReadLine().empty()) return 1;
    std::vector<double> lateMs;
    for (int i = 0; i < kSlides; ++i) Slide(x, camera, lateMs);
    if (lateMs.size() != std::size_t{kSlides} * kSteps) {
        std::fprintf(stderr, "slide-bench: only %zu steps were seen\n", lateMs.size());
        return 1;
    }
    std::ranges::sort(lateMs);
    std::printf("steps of a slide, %zu: %.1f ms late at the median, 95 %% at most %.1f, all %.1f\n",
                lateMs.size(), lateMs[lateMs.size() / 2], lateMs[lateMs.size() * 95 / 100],
                lateMs.back());
    return camera.Finish().exitCode;
}
