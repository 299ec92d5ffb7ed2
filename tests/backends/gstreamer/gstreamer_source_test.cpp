#include "backends/gstreamer/gstreamer_source.h"

#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <gtest/gtest.h>
#include <mutex>
#include <thread>

#include "backends/gstreamer/video_caps.h"
#include "osp/media/live/picture_converter.h"
#include "tests/backends/gstreamer/test_devices.h"

namespace Osp::Media {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Testing::TestDevice;

constexpr auto kPatience = 10s;

TestDevice Camera(std::string element, const char* format = "I420") {
    return {"Test",
            std::string("video/x-raw,format=") + format +
                ",width=640,height=480,framerate={60/1,30/1,5/1}",
            std::move(element), ";"};
}

/// Keeps the preview frame that is made of the last picture.
class Watcher : public VideoSink {
  public:
    void OnPicture(const VideoPicture& picture) override {
        Base::ByteBuffer frame;
        const bool isWhole = converter_.MakeFrame(picture, {{640, 480}, {640, 480}}, frame);
        const std::lock_guard lock(mutex_);
        ++pictures_;
        if (isWhole) frame_ = std::move(frame);
        changed_.notify_all();
    }
    void OnDamage() override { Count(damages_); }
    void OnEnded() override { Count(ends_); }

    bool Await(int pictures) {
        return Await([this, pictures] { return pictures_ >= pictures; });
    }
    bool AwaitEnd(int ends = 1) {
        return Await([this, ends] { return ends_ >= ends; });
    }
    bool AwaitDamage() {
        return Await([this] { return damages_ > 0; });
    }
    int Pictures() const { return pictures_; }
    int Ends() const { return ends_; }
    /// Y, Cb, Cr in the middle of one of the seven bars.
    std::array<int, 3> Bar(int bar) {
        const std::lock_guard lock(mutex_);
        const auto* const bytes = frame_.GetPointer();
        const int x = 640 * bar / 7 + 45;
        constexpr int kLuma = 640 * 480;
        const int chroma = 120 * 320 / 2 + x / 2;
        return {bytes[120 * 640 + x], bytes[kLuma + chroma], bytes[kLuma + kLuma / 4 + chroma]};
    }

  private:
    void Count(std::atomic<int>& counter) {
        const std::lock_guard lock(mutex_);
        ++counter;
        changed_.notify_all();
    }
    template <class Condition>
    bool Await(Condition condition) {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, kPatience, condition);
    }

    PictureConverter converter_{CameraSelection::kPrimary};
    std::mutex mutex_;
    std::condition_variable changed_;
    std::atomic<int> pictures_ = 0;
    std::atomic<int> damages_ = 0;
    std::atomic<int> ends_ = 0;
    Base::ByteBuffer frame_;
};

/// A source over one device.
struct Stage {
    explicit Stage(const TestDevice& device)
        : catalogue((Testing::Provide({device}), Testing::kSilentProvider)), source(catalogue, "") {
        EXPECT_TRUE(catalogue.WaitUntilKnown(kPatience));
    }
    result Start() { return source.Start(source.Modes().at(0), watcher); }

    CameraCatalogue catalogue;
    GstreamerSource source;
    std::shared_ptr<Watcher> watcher = std::make_shared<Watcher>();
};

/// BT.601 of three quarters: yellow, red, blue.
constexpr std::pair<int, std::array<int, 3>> kBars[] = {
    {1, {162, 44, 142}}, {5, {65, 100, 212}}, {6, {35, 212, 114}}};

/// The encoder takes the bars for what has the full range.
std::array<int, 3> AsInJpeg(const std::array<int, 3>& colour) {
    const auto chroma = [](int value) { return 128 + (value - 128) * 224 / 255; };
    return {16 + colour[0] * 219 / 255, chroma(colour[1]), chroma(colour[2])};
}

void ExpectNear(const std::array<int, 3>& actual, const std::array<int, 3>& expected, int bar) {
    for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(actual[i], expected[i], 3) << bar << ", " << i;
}

TEST(GstreamerSource, EveryFormatArrivesInItsColours) {
    const char* const raw = "videotestsrc is-live=true pattern=smpte75";
    const struct {
        TestDevice device;
        VideoFormat format;
    } cases[] = {
        {Camera(raw, "I420"), VideoFormat::kI420},
        {Camera(raw, "NV12"), VideoFormat::kNv12},
        {Camera(raw, "YUY2"), VideoFormat::kYuy2},
        {{"Test", "image/jpeg,width=640,height=480",
          std::string(raw) + " ! video/x-raw,format=I420,width=640,height=480,framerate=30/1 ! "
                             "jpegenc",
          ";"},
         VideoFormat::kMjpeg},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.format));
        Stage stage(c.device);
        ASSERT_EQ(stage.source.Modes().at(0).format, c.format);
        ASSERT_EQ(stage.Start(), result::kSuccess);
        ASSERT_TRUE(stage.watcher->Await(2));
        stage.source.Stop();
        for (const auto& [bar, colour] : kBars) {
            ExpectNear(stage.watcher->Bar(bar),
                       c.format == VideoFormat::kMjpeg ? AsInJpeg(colour) : colour, bar);
        }
    }
}

TEST(GstreamerSource, NothingComesAfterStopAndEachStartDeliversAnew) {
    Stage stage(Camera("videotestsrc is-live=true"));
    for (int i = 0; i < 50; ++i) {
        stage.watcher = std::make_shared<Watcher>();
        ASSERT_EQ(stage.Start(), result::kSuccess) << i;
        if (i % 2 == 0) {
            ASSERT_TRUE(stage.watcher->Await(1)) << i;
        }
        stage.source.Stop();
        const int pictures = stage.watcher->Pictures();
        if (i % 10 == 0) std::this_thread::sleep_for(80ms);
        EXPECT_EQ(stage.watcher->Pictures(), pictures) << i;
        EXPECT_EQ(stage.watcher.use_count(), 1) << "the stream lives on";
    }
}

TEST(GstreamerSource, ADeviceThatDoesNotBeginSaysWhy) {
    const struct {
        const char* element;
        result expected;
    } cases[] = {
        {"no-such-element", result::kIo},
        {"filesrc location=/nowhere", result::kObjectNotFound},
        {"audiotestsrc", result::kIo},
        {Testing::kBusyElement, result::kDeviceBusy},
        {Testing::kTakenElement, result::kDeviceBusy},
    };
    for (const auto& c : cases) {
        Stage stage(Camera(c.element));
        EXPECT_EQ(stage.Start(), c.expected) << c.element;
    }
}

TEST(GstreamerSource, AStreamThatEndsByItselfSaysSoOnce) {
    const char* const elements[] = {"videotestsrc is-live=true num-buffers=3",
                                    "videotestsrc is-live=true ! identity error-after=3"};
    for (const char* element : elements) {
        Stage stage(Camera(element));
        ASSERT_EQ(stage.Start(), result::kSuccess) << element;
        EXPECT_TRUE(stage.watcher->AwaitEnd()) << element;
        EXPECT_GT(stage.watcher->Pictures(), 0) << element;
        ASSERT_EQ(stage.Start(), result::kSuccess) << element;
        EXPECT_TRUE(stage.watcher->AwaitEnd(2)) << element;
    }
    Stage broken(
        Camera("fakesrc is-live=true do-timestamp=true sizetype=fixed sizemax=9 ! "
               "video/x-raw,format=I420,width=640,height=480,framerate=30/1"));
    ASSERT_EQ(broken.Start(), result::kSuccess);
    EXPECT_TRUE(broken.watcher->AwaitDamage());
    EXPECT_EQ(broken.watcher->Pictures(), 0);
}

TEST(GstreamerSource, NobodyWaitsForASlowDevice) {
    auto stage = std::make_unique<Stage>(Camera(Testing::kSlowElement));
    const auto start = Clock::now();
    ASSERT_EQ(stage->Start(), result::kSuccess);
    EXPECT_LT(Clock::now() - start, 800ms);
    EXPECT_TRUE(stage->watcher->AwaitEnd()) << "it fails after a second and a half";

    const auto again = Clock::now();
    ASSERT_EQ(stage->Start(), result::kSuccess);
    stage->source.Stop();
    EXPECT_EQ(stage->Start(), result::kSuccess) << "behind the one that still opens the device";
    stage->source.Stop();
    EXPECT_LT(Clock::now() - again, 1300ms);
    const auto watcher = stage->watcher;
    stage.reset();
    EXPECT_EQ(watcher->Ends(), 1);
    EXPECT_EQ(Testing::SlowStarts(), 2) << "the third was stopped before its turn";
}

TEST(GstreamerSource, ModesComeFromAllKindsOfCaps) {
    Testing::Provide({});
    const auto modes = [](const char* text) {
        const CapsOwner caps(gst_caps_from_string(text));
        return ModesOf(*caps);
    };
    using Modes = std::vector<VideoMode>;
    EXPECT_EQ(modes("video/x-raw,format={GRAY8,NV12,YUY2},width=320,height=240,"
                    "framerate={15/1,30000/1001}; video/x-bayer,width=640,height=480; "
                    "video/x-raw(memory:DMABuf),format=NV12,width=640,height=480"),
              (Modes{{VideoFormat::kNv12, {320, 240}, 30}, {VideoFormat::kYuy2, {320, 240}, 30}}));
    EXPECT_EQ(modes("image/jpeg,width=[64,1300,2],height=[64,1000,2],framerate=[1/1,25/1]; "
                    "image/jpeg,width=640,height=480,framerate=60/1"),
              (Modes{{VideoFormat::kMjpeg, {64, 64}, 25},
                     {VideoFormat::kMjpeg, {1300, 1000}, 25},
                     {VideoFormat::kMjpeg, {640, 480}, 60},
                     {VideoFormat::kMjpeg, {800, 480}, 25},
                     {VideoFormat::kMjpeg, {1280, 720}, 25},
                     {VideoFormat::kMjpeg, {1280, 960}, 25}}));
    EXPECT_EQ(modes("video/x-raw,format=I420,width=[1,2147483647],height=[1,2147483647]").size(),
              7u);

    const CapsOwner device(gst_caps_from_string(
        "video/x-raw,format=YUY2,width=640,height=480,framerate={60/1,24/1,1/1}; "
        "video/x-raw,format=YUY2,width=640,height=480,framerate=5/1; "
        "image/jpeg,width=640,height=480"));
    const auto chosen = [&device](VideoFormat format, int width) {
        const CapsOwner caps = CapsFor({format, {width, 480}, 0}, *device);
        const Base::Owner<gchar, g_free> text(caps ? gst_caps_to_string(caps.get()) : nullptr);
        return std::string(text ? text.get() : "none");
    };
    EXPECT_NE(chosen(VideoFormat::kYuy2, 640).find("24/1"), std::string::npos);
    EXPECT_EQ(chosen(VideoFormat::kMjpeg, 640), "image/jpeg, width=(int)640, height=(int)480");
    EXPECT_EQ(chosen(VideoFormat::kMjpeg, 800), "none");
    EXPECT_EQ(chosen(VideoFormat::kNv12, 640), "none");
}

}  // namespace
}  // namespace Osp::Media
