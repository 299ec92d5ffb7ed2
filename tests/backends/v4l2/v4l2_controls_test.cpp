#include "backends/v4l2/v4l2_controls.h"

#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <linux/videodev2.h>
#include <map>
#include <vector>

#include "backends/v4l2/device_controls.h"
#include "tests/support/temporary_folder.h"

namespace Osp::Media {
namespace {

using Testing::ReadText;

struct Control {
    int least = 0;
    int most = 0;
    int step = 1;
    int value = 0;
    std::uint32_t flags = 0;
};

/// What the kernel would keep.
struct Hardware {
    std::map<std::uint32_t, Control> controls;
    std::vector<std::uint32_t> written;
};

class HardwareNode : public ControlNode {
  public:
    explicit HardwareNode(Hardware& hardware) : hardware_(hardware) {}
    bool Do(unsigned long request, void* argument) override {
        if (request == VIDIOC_QUERYCTRL) return Query(*static_cast<v4l2_queryctrl*>(argument));
        auto& control = *static_cast<v4l2_control*>(argument);
        const auto known = hardware_.controls.find(control.id);
        if (known == hardware_.controls.end()) return false;
        if (request == VIDIOC_G_CTRL) {
            control.value = known->second.value;
            return true;
        }
        const auto& [least, most, step, value, flags] = known->second;
        if (request != VIDIOC_S_CTRL || control.value < least || control.value > most) return false;
        if ((control.value - least) % step != 0) return false;
        // As a webcam has it: the temperature is refused while it is found automatically.
        if (control.id == V4L2_CID_WHITE_BALANCE_TEMPERATURE &&
            hardware_.controls[V4L2_CID_AUTO_WHITE_BALANCE].value != 0) {
            return false;
        }
        known->second.value = control.value;
        hardware_.written.push_back(control.id);
        return true;
    }

  private:
    bool Query(v4l2_queryctrl& query) {
        const auto known = hardware_.controls.find(query.id);
        if (known == hardware_.controls.end()) return false;
        query.minimum = known->second.least;
        query.maximum = known->second.most;
        query.step = known->second.step;
        query.flags = known->second.flags;
        return true;
    }

    Hardware& hardware_;
};

struct Stage {
    explicit Stage(std::map<std::uint32_t, Control> controls) : hardware{std::move(controls), {}} {}
    std::unique_ptr<V4l2Controls> Open() {
        return std::make_unique<V4l2Controls>(std::make_unique<HardwareNode>(hardware),
                                              lights.Path());
    }
    int Value(std::uint32_t id) { return hardware.controls.at(id).value; }

    Testing::TemporaryFolder lights;
    Hardware hardware;
};

TEST(V4l2Controls, SetWhatTheDeviceHasAndPutItBack) {
    Stage stage({{V4L2_CID_ZOOM_ABSOLUTE, {100, 500, 20, 100}},
                 {V4L2_CID_AUTO_WHITE_BALANCE, {0, 1, 1, 1}},
                 {V4L2_CID_WHITE_BALANCE_TEMPERATURE, {3200, 6000, 50, 4600}},
                 {V4L2_CID_AUTO_FOCUS_START, {0, 1, 1, 0}},
                 {V4L2_CID_FLASH_LED_MODE, {0, 2, 1, 0}}});
    auto controls = stage.Open();
    const int zooms[] = {100, 140, 200, 240, 300, 340, 400};
    for (int step = 0; step <= 6; ++step) {
        EXPECT_EQ(controls->Set(VideoControl::kZoom, step), result::kSuccess);
        EXPECT_EQ(stage.Value(V4L2_CID_ZOOM_ABSOLUTE), zooms[step]) << step;
    }
    const int temperatures[] = {0, 5500, 6000, 4200, 3200};
    for (const int balance : {1, 2, 3, 4, 0}) {
        EXPECT_EQ(controls->Set(VideoControl::kWhiteBalance, balance), result::kSuccess);
        EXPECT_EQ(stage.Value(V4L2_CID_AUTO_WHITE_BALANCE), balance == 0 ? 1 : 0);
        if (balance == 0) continue;
        EXPECT_EQ(stage.Value(V4L2_CID_WHITE_BALANCE_TEMPERATURE),
                  temperatures[static_cast<std::size_t>(balance)]);
    }
    EXPECT_EQ(controls->Set(VideoControl::kWhiteBalance, 5), result::kInvalidArgument);
    EXPECT_EQ(controls->Set(VideoControl::kFocus, 1), result::kSuccess);
    EXPECT_EQ(stage.hardware.written.back(), V4L2_CID_AUTO_FOCUS_START);
    EXPECT_EQ(controls->Set(VideoControl::kFlash, 1), result::kSuccess);
    EXPECT_EQ(stage.Value(V4L2_CID_FLASH_LED_MODE), V4L2_FLASH_LED_MODE_TORCH);

    EXPECT_EQ(controls->Set(VideoControl::kWhiteBalance, 3), result::kSuccess);
    controls.reset();
    EXPECT_EQ(stage.Value(V4L2_CID_ZOOM_ABSOLUTE), 100);
    EXPECT_EQ(stage.Value(V4L2_CID_AUTO_WHITE_BALANCE), 1);
    EXPECT_EQ(stage.Value(V4L2_CID_WHITE_BALANCE_TEMPERATURE), 4600);
    EXPECT_EQ(stage.Value(V4L2_CID_FLASH_LED_MODE), V4L2_FLASH_LED_MODE_NONE);
}

TEST(V4l2Controls, WhatTheDeviceCannotDoIsRefused) {
    const std::map<std::uint32_t, Control> cases[] = {
        {},
        {{V4L2_CID_ZOOM_ABSOLUTE, {0, 10, 1, 0}},
         {V4L2_CID_WHITE_BALANCE_TEMPERATURE, {2800, 6500, 1, 0}},
         {V4L2_CID_FLASH_LED_MODE, {0, 1, 1, 0}}},
        {{V4L2_CID_ZOOM_ABSOLUTE, {100, 399, 1, 100}},
         {V4L2_CID_AUTO_WHITE_BALANCE, {0, 1, 1, 1}},
         {V4L2_CID_AUTO_FOCUS_START, {0, 1, 1, 0, V4L2_CTRL_FLAG_DISABLED}},
         {V4L2_CID_FLASH_LED_MODE, {0, 2, 1, 0, V4L2_CTRL_FLAG_READ_ONLY}}},
    };
    for (const auto& c : cases) {
        Stage stage(c);
        const auto controls = stage.Open();
        for (const auto control : {VideoControl::kZoom, VideoControl::kWhiteBalance,
                                   VideoControl::kFocus, VideoControl::kFlash}) {
            EXPECT_FALSE(controls->Has(control));
            EXPECT_EQ(controls->Set(control, 1), result::kUnsupported);
        }
        EXPECT_TRUE(stage.hardware.written.empty());
    }
}

TEST(DeviceControls, TheTorchThatIsWantedShinesWhenTheDeviceIsOpen) {
    const Testing::TemporaryFolder lights;
    std::filesystem::create_directory(lights / "torch");
    const std::string torch = lights / "torch/brightness";
    Testing::WriteText(lights / "torch/max_brightness", "3");
    Testing::WriteText(torch, "0");
    {
        DeviceControls controls(lights.Path());
        const auto open = [&controls] {
            controls.Open("");
            controls.WaitUntilKnown(std::chrono::steady_clock::now() + std::chrono::seconds(10));
        };
        EXPECT_EQ(controls.Set(VideoControl::kFlash, 1), result::kUnsupported);
        open();
        EXPECT_TRUE(controls.Has(VideoControl::kFlash));
        EXPECT_FALSE(controls.Has(VideoControl::kZoom));
        EXPECT_EQ(ReadText(torch), "0");
        controls.Close();
        EXPECT_EQ(controls.Set(VideoControl::kFlash, 1), result::kSuccess);
        open();
        EXPECT_EQ(ReadText(torch), "3");
        controls.Close();
        controls.Close();
        EXPECT_EQ(controls.Set(VideoControl::kFlash, 0), result::kSuccess);
        open();
        EXPECT_EQ(ReadText(torch), "0");
        EXPECT_EQ(controls.Set(VideoControl::kFlash, 1), result::kSuccess);
    }
    EXPECT_EQ(ReadText(torch), "0");
}

TEST(V4l2Controls, ATorchOfTheMachineStandsInForTheDevice) {
    Stage stage({});
    for (const char* light : {"keyboard", "white:flash", "white:torch"}) {
        std::filesystem::create_directory(stage.lights / light);
        Testing::WriteText(stage.lights / light + "/max_brightness", "200\n");
        Testing::WriteText(stage.lights / light + "/brightness", "7\n");
    }
    auto controls = stage.Open();
    EXPECT_EQ(controls->Set(VideoControl::kFlash, 1), result::kSuccess);
    EXPECT_EQ(ReadText(stage.lights / "white:torch/brightness"), "200");
    EXPECT_EQ(ReadText(stage.lights / "white:flash/brightness"), "7\n");
    EXPECT_EQ(controls->Set(VideoControl::kFlash, 0), result::kSuccess);
    EXPECT_EQ(ReadText(stage.lights / "white:torch/brightness"), "0");
    EXPECT_EQ(controls->Set(VideoControl::kFlash, 1), result::kSuccess);
    controls.reset();
    EXPECT_EQ(ReadText(stage.lights / "white:torch/brightness"), "0");
}

}  // namespace
}  // namespace Osp::Media
