#include "backends/gstreamer/camera_catalogue.h"

#include <atomic>
#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <thread>

#include "tests/backends/gstreamer/test_devices.h"
#include "tests/support/temporary_folder.h"

namespace Osp::Media {
namespace {

using namespace std::chrono_literals;
using Testing::TestDevice;

constexpr auto kPatience = 10s;
constexpr const char* kCaps = "image/jpeg,width=640,height=480";

TestDevice Camera(const std::string& name, const std::string& properties = ";") {
    return {name, kCaps, "videotestsrc", properties};
}

std::vector<std::string> IdsOf(const CameraCatalogue& catalogue) {
    std::vector<std::string> ids;
    for (const CataloguedCamera& camera : catalogue.Cameras()) ids.push_back(camera.info.id);
    return ids;
}

using Ids = std::vector<std::string>;

TEST(CameraCatalogue, KnowsWhatIsThereComesAndGoes) {
    const Testing::TemporaryFolder folder;
    Testing::WriteText(folder / "video7", "");
    std::filesystem::create_symlink("video7", folder / "link");
    const std::string file = ",device.path=(string)" + (folder / "video7");
    const TestDevice webcam = Camera(
        "Webcam", file + ",v4l2.device.driver=(string)uvc,v4l2.device.bus_info=(string)usb-1;");
    TestDevice microphone = Camera("Microphone");
    microphone.deviceClass = "Audio/Source";
    Testing::Provide({Camera("/base/back", ",api.libcamera.Location=(string)CameraLocationBack;"),
                      Camera("/base/front", ",api.libcamera.location=(string)front;"),
                      microphone,
                      Camera("Processor", ",v4l2.device.driver=(string)bcm2835-isp;"),
                      {"Grey", "video/x-raw,format=GRAY8,width=8,height=8", "fakesrc", ";"}});
    CameraCatalogue catalogue(Testing::kAnnouncingProvider);
    ASSERT_TRUE(catalogue.WaitUntilKnown(kPatience));
    EXPECT_TRUE(catalogue.HasProvider());
    EXPECT_EQ(IdsOf(catalogue), (Ids{"/base/back", "/base/front"}));
    EXPECT_EQ(catalogue.Cameras()[0].info.facing, CameraFacing::kBack);
    EXPECT_EQ(catalogue.Cameras()[1].info.facing, CameraFacing::kFront);

    std::atomic<int> changes = 0;
    catalogue.Watch(&changes, folder / "link", [&changes] { ++changes; });
    Testing::PlugIn(webcam);
    Testing::PlugIn(webcam);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(IdsOf(catalogue), (Ids{"/base/back", "/base/front", "usb-1"}));
    EXPECT_EQ(catalogue.Find(folder / "link")->info.id, "usb-1");
    EXPECT_EQ(catalogue.Find("usb-1")->file, folder / "video7");
    EXPECT_EQ(catalogue.Find("")->info.id, "/base/back");
    EXPECT_FALSE(catalogue.Find("usb-2"));
    EXPECT_FALSE(catalogue.Find(folder / "nothing"));

    Testing::PullOut("Webcam");
    EXPECT_EQ(changes, 2);
    EXPECT_FALSE(catalogue.Find("usb-1"));
    catalogue.Watch(&changes, "", {});
    Testing::PlugIn(webcam);
    EXPECT_EQ(changes, 2);
}

TEST(CameraCatalogue, LooksAgainWhereNobodyAnnounces) {
    Testing::Provide({Camera("one")});
    CameraCatalogue catalogue(Testing::kSilentProvider);
    ASSERT_TRUE(catalogue.WaitUntilKnown(kPatience));
    std::atomic<int> changes = 0;
    catalogue.Watch(&changes, "two", [&changes] { ++changes; });
    Testing::Provide({Camera("two")});
    EXPECT_FALSE(catalogue.Find("two"));
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (changes == 0 && std::chrono::steady_clock::now() < end) std::this_thread::sleep_for(5ms);
    EXPECT_EQ(IdsOf(catalogue), Ids{"two"});

    CameraCatalogue nothing("kivo-no-such-provider");
    ASSERT_TRUE(nothing.WaitUntilKnown(kPatience));
    EXPECT_FALSE(nothing.HasProvider());
    EXPECT_FALSE(nothing.Find(""));
}

}  // namespace
}  // namespace Osp::Media
