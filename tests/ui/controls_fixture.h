// The camera screen and a finger.
#pragma once

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "app/model/action_ids.h"
#include "app/model/request_ids.h"
#include "tests/support/camera_screen.h"
#include "tests/support/choosing.h"
#include "tests/support/main_form_access.h"
#include "tests/support/phone.h"
#include "tests/support/pictures/subjects.h"

namespace Kivo::Testing {

using Pixels = std::vector<std::uint32_t>;

struct Box {
    int x, y, width, height;
};

class ControlsTest : public testing::Test {
  protected:
    // A camera that shows a still picture, so that screens can be compared.
    ControlsTest()
        : subjects_(1), phone_({.primary = subjects_.Source(), .secondary = subjects_.Source()}) {
        phone_.Do({"await preview", "wait 100"});
    }

    void Use(CameraType type) { Choose(phone_, type, PhotoEffect::kNormal); }
    template <class Get>
    auto Setting(Get get) {
        return phone_.On([get] { return get(CurrentSettings()); });
    }
    int Zoom() {
        return Setting([](auto& s) { return static_cast<int>(s.GetZoomLevel()); });
    }
    int Effect() { return static_cast<int>(EffectOf(phone_)); }
    nlohmann::json Find(const std::string& name) {
        const nlohmann::json screen = phone_.Screen();
        for (const nlohmann::json& control : screen["controls"]) {
            if (control["text"] == name) return control;
        }
        return nullptr;
    }
    int ZoomBarY() { return Find("Zoom")["bounds"][1]; }
    int RollX() { return Find("Effect")["bounds"][0]; }
    bool IsMaskShown() {
        const nlohmann::json screen = phone_.Screen();
        return std::ranges::any_of(screen["controls"],
                                   [](const nlohmann::json& c) { return c["kind"] == "panel"; });
    }
    Pixels Shown(const Box& box) {
        return phone_.On([box] {
            const auto& screen = Osp::Ui::Screen::Current().Compose();
            Pixels pixels;
            for (int y = box.y; y < box.y + box.height; ++y) {
                const auto* row = reinterpret_cast<const std::uint32_t*>(
                    screen.Data() + std::ptrdiff_t{screen.StrideBytes()} * y);
                pixels.insert(pixels.end(), row + box.x, row + box.x + box.width);
            }
            return pixels;
        });
    }
    Pixels WholeScreen() { return Shown({0, 0, 800, 480}); }
    void Drag(int x, int y, int dx, int dy) {
        const Spot end{x + dx, y + dy};
        phone_.Do({Press({x, y}), Line("move", end), Release(end), "wait 100"});
    }
    void Extend() {
        phone_.Do({Tap(kZoomBar), "wait 100", Tap(kEffectRoll), "wait 100"});
        EXPECT_EQ(ZoomBarY(), 0);
        EXPECT_EQ(RollX(), -132);
    }

    Subjects subjects_;
    Phone phone_;
};

}  // namespace Kivo::Testing
