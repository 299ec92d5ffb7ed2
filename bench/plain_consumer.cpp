// The least that a program can do with a camera: each frame is copied once, or, with --show and in
// I420, scaled to 800 x 480 and coloured, as one that shows it has to. What the camera of the
// platform costs is measured against this.
//
//     plain-camera-consumer --copy|--show NODE-NAME SECONDS FORMAT:WxH@RATE...
//
// takes the first of the modes that the camera has and prints "first MS", from connecting the
// stream to the first frame, and at the end how many frames came and the processor time from the
// first one on. States and modes go to standard error. It ends with 1 when no frame came.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <libyuv/convert_argb.h>
#include <libyuv/scale.h>
#include <pipewire/pipewire.h>
#include <spa/param/param.h>
#include <spa/pod/builder.h>
#include <string_view>
#include <utility>
#include <vector>

#include "osp/base/owner.h"
#include "tests/support/virtual_camera/mode.h"

namespace {

using Osp::Base::Owner;
using Osp::Testing::BuildOffers;
using Osp::Testing::Describe;
using Osp::Testing::Mode;
using Osp::Testing::ParseMode;
using Osp::Testing::ReadFormat;

double NowMs(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

class Consumer {
  public:
    Consumer(pw_core* core, const char* target, const std::vector<Mode>& modes, bool shows)
        : shows_(shows),
          beginMs_(NowMs(CLOCK_MONOTONIC)),
          stream_(pw_stream_new(
              core, "plain-camera-consumer",
              pw_properties_new(PW_KEY_MEDIA_TYPE, "Video", PW_KEY_MEDIA_CATEGORY, "Capture",
                                PW_KEY_MEDIA_ROLE, "Camera", PW_KEY_TARGET_OBJECT, target,
                                // else another camera takes the place of one that is not there
                                PW_KEY_NODE_DONT_RECONNECT, "true", nullptr))) {
        pw_stream_add_listener(stream_.get(), &listener_, &kEvents, this);
        std::uint8_t memory[16384];
        spa_pod_builder builder;
        spa_pod_builder_init(&builder, memory, sizeof memory);
        std::vector<const spa_pod*> formats = BuildOffers(modes, builder);
        constexpr auto kFlags =
            static_cast<pw_stream_flags>(PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS);
        pw_stream_connect(stream_.get(), PW_DIRECTION_INPUT, PW_ID_ANY, kFlags, formats.data(),
                          static_cast<std::uint32_t>(formats.size()));
    }

    bool Report() const {
        std::printf("frames %d cpu_ms %.1f\n", frames_,
                    frames_ == 0 ? 0 : NowMs(CLOCK_PROCESS_CPUTIME_ID) - cpuBeginMs_);
        return frames_ > 0;
    }

  private:
    static const pw_stream_events kEvents;

    void OnProcess() {
        pw_buffer* const buffer = pw_stream_dequeue_buffer(stream_.get());
        if (buffer == nullptr) return;
        if (frames_++ == 0) {
            std::printf("first %.1f\n", NowMs(CLOCK_MONOTONIC) - beginMs_);
            cpuBeginMs_ = NowMs(CLOCK_PROCESS_CPUTIME_ID);
        }
        const spa_data& data = buffer->buffer->datas[0];
        if (shows_) {
            Show(static_cast<const std::uint8_t*>(data.data));
        } else {
            copy_.resize(data.maxsize);
            std::memcpy(copy_.data(), data.data, std::min(data.chunk->size, data.maxsize));
        }
        pw_stream_queue_buffer(stream_.get(), buffer);
    }

    void Show(const std::uint8_t* luma) {
        const auto [width, height] = size_;
        const std::uint8_t* const cb = luma + width * height;
        scaled_.resize(800 * 480 * 3 / 2);
        copy_.resize(800 * 480 * 4);
        std::uint8_t* const scaledCb = scaled_.data() + 800 * 480;
        std::uint8_t* const scaledCr = scaledCb + 400 * 240;
        libyuv::I420Scale(luma, width, cb, width / 2, cb + width * height / 4, width / 2, width,
                          height, scaled_.data(), 800, scaledCb, 400, scaledCr, 400, 800, 480,
                          libyuv::kFilterBilinear);
        libyuv::I420ToARGB(scaled_.data(), 800, scaledCb, 400, scaledCr, 400, copy_.data(), 3200,
                           800, 480);
    }

    const bool shows_;
    std::pair<int, int> size_;  // of what was agreed upon
    std::vector<std::uint8_t> scaled_;
    double beginMs_;
    double cpuBeginMs_ = 0;
    int frames_ = 0;
    std::vector<std::uint8_t> copy_;
    spa_hook listener_{};
    Owner<pw_stream, pw_stream_destroy> stream_;
};

const pw_stream_events Consumer::kEvents = [] {
    pw_stream_events events{};
    events.version = PW_VERSION_STREAM_EVENTS;
    events.state_changed = [](void*, pw_stream_state, pw_stream_state state, const char* error) {
        std::fprintf(stderr, "%s%s%s\n", pw_stream_state_as_string(state), error ? ": " : "",
                     error ? error : "");
    };
    events.param_changed = [](void* consumer, std::uint32_t id, const spa_pod* format) {
        const auto mode = id == SPA_PARAM_Format && format ? ReadFormat(format) : std::nullopt;
        if (!mode) return;
        static_cast<Consumer*>(consumer)->size_ = {mode->width, mode->height};
        std::fprintf(stderr, "%s\n", Describe(*mode).c_str());
    };
    events.process = [](void* consumer) { static_cast<Consumer*>(consumer)->OnProcess(); };
    return events;
}();

int Run(const char* target, const std::vector<Mode>& modes, int seconds, bool shows) {
    pw_init(nullptr, nullptr);
    const Owner<pw_main_loop, pw_main_loop_destroy> mainLoop(pw_main_loop_new(nullptr));
    pw_loop* const loop = pw_main_loop_get_loop(mainLoop.get());
    const Owner<pw_context, pw_context_destroy> context(pw_context_new(loop, nullptr, 0));
    const Owner<pw_core, pw_core_disconnect> core(pw_context_connect(context.get(), nullptr, 0));
    if (core == nullptr) {
        std::fputs("plain-camera-consumer: there is no daemon\n", stderr);
        return 1;
    }
    const Consumer consumer(core.get(), target, modes, shows);
    spa_source* const end = pw_loop_add_timer(
        loop,
        [](void* quit, std::uint64_t) { pw_main_loop_quit(static_cast<pw_main_loop*>(quit)); },
        mainLoop.get());
    timespec time{seconds, 0};
    pw_loop_update_timer(loop, end, &time, nullptr, false);
    pw_main_loop_run(mainLoop.get());
    return consumer.Report() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view task = argc > 1 ? argv[1] : "";
    const int seconds = argc > 4 ? std::atoi(argv[3]) : 0;
    std::vector<Mode> modes;
    for (int i = 4; i < argc; ++i) {
        if (const auto mode = ParseMode(argv[i])) modes.push_back(*mode);
    }
    if ((task != "--copy" && task != "--show") || seconds < 1 ||
        modes.size() + 4 != static_cast<std::size_t>(argc)) {
        std::fputs(
            "usage: plain-camera-consumer --copy|--show NODE-NAME SECONDS FORMAT:WxH@RATE...\n",
            stderr);
        return 2;
    }
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    return Run(argv[2], modes, seconds, task == "--show");
}
