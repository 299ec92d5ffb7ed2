// What the camera screen costs: preview frames, the blend of a double exposure, and composing the
// screen under all controls. Processor time of the loop thread.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <vector>

#include <osp/ui/controls/overlay_panel.h>

#include "bench/camera_run.h"
#include "effects/conversions/preview_conversion.h"
#include "osp/ui/visible_controls.h"

namespace {

using Osp::Ui::Screen;
using Osp::Ui::Controls::OverlayPanel;

constexpr int kWidth = 800;
constexpr int kHeight = 480;
constexpr int kRuns = 300;

double ProcessorMs() {
    timespec now;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

void Time(const char* name, const std::function<void()>& prepare,
          const std::function<void()>& run) {
    std::vector<double> times;
    for (int i = 0; i < kRuns; ++i) {
        prepare();
        const double begin = ProcessorMs();
        run();
        times.push_back(ProcessorMs() - begin);
    }
    std::ranges::sort(times);
    std::printf("%-46s %6.3f ms median\n", name, times[times.size() / 2]);
}

OverlayPanel* FindOverlay() {
    OverlayPanel* found = nullptr;
    Osp::Ui::WalkScreen([&found](const Osp::Ui::Control& control) {
        const auto* panel = dynamic_cast<const OverlayPanel*>(&control);
        if (panel != nullptr) found = const_cast<OverlayPanel*>(panel);
    });
    return found;
}

void MeasureScreen() {
    OverlayPanel* const overlay = FindOverlay();
    if (overlay == nullptr) {
        std::fprintf(stderr, "screen-bench: there is no camera screen\n");
        std::exit(1);
    }
    Osp::Base::ByteBuffer frame;
    (void)frame.Construct(kWidth * kHeight * 3 / 2);
    for (int i = 0; i < frame.GetCapacity(); ++i) {
        frame.GetPointer()[i] = static_cast<Osp::Base::byte>(i * 7);
    }
    const auto handOver = [&] {
        (void)overlay->SetInputBuffer({kWidth, kHeight}, frame, {kWidth, kHeight},
                                      Osp::Ui::Controls::BufferPixelFormat::kYuv420Planar);
    };
    Time(
        "a preview frame converted and handed over", [] {}, handOver);

    std::vector<std::uint8_t> first(static_cast<std::size_t>(kWidth) * kHeight * 3, 90);
    std::vector<std::uint8_t> live(first.size());
    const Kivo::Effects::Pixels converted{live.data(), kWidth, kHeight};
    Osp::Base::ByteBuffer blend;
    (void)blend.Construct(frame.GetCapacity());
    Time(
        "the blend of a double exposure", [] {},
        [&] {
            Kivo::ConvertPreview(frame.GetPointer(), converted);
            Kivo::EncodePreview(converted, {first.data(), kWidth, kHeight}, blend.GetPointer());
            (void)overlay->SetInputBuffer({kWidth, kHeight}, blend, {kWidth, kHeight},
                                          Osp::Ui::Controls::BufferPixelFormat::kYuv420Planar);
        });
    Time("the screen composed, every pixel anew", handOver,
         [] { (void)Screen::Current().Compose(); });
}

}  // namespace

int main() {
    Host::ScriptQueue queue;
    queue.Add({"await preview", 0, nullptr});
    queue.Add({"wait 500", 0, [](const auto&) { MeasureScreen(); }});
    queue.Close();
    return Bench::RunCamera(Host::ClockKind::kVirtual, queue);
}
