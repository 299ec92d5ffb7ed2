#include "host/cameras/camera_sources.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "host/cameras/camera_choice.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/test_loop.h"

namespace Host {
namespace {

using Osp::Media::CameraSelection;

TEST(CameraSources, MakeWhatTheyNameAndSayWhatTheyCannot) {
    const Osp::Testing::TestLoop loop;
    const Osp::Testing::TemporaryFolder folder;
    CameraModules modules;
    auto one = MakeCameras("auto", "none", false, modules);
    ASSERT_TRUE(one);
    EXPECT_EQ((*one)->Count(), 1);
    EXPECT_EQ((*one)->Id(CameraSelection::kPrimary), "scene");

    const struct {
        std::string source;
        const char* said;
        bool isKnown;
    } cases[] = {
        {"sceen",
         "unknown camera source 'sceen': it is auto, scene, photos:DIR, "
         "pipewire[:ID], v4l2:PATH, libcamera[:ID] or none",
         false},
        {"scene:", "'scene:'", false},
        {"", "''", false},
        {"photos", "'photos'", false},
        {"pipewire:", "'pipewire:'", false},
        {"v4l2", "'v4l2'", false},
        {"photos:" + folder.Path(), "no JPEG or PNG file", true},
        {"photos:/nowhere", "/nowhere", true},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(static_cast<bool>(CheckSource(c.source, true)), c.isKnown) << c.source;
        for (const bool isPrimary : {true, false}) {
            const auto cameras = MakeCameras(isPrimary ? c.source : "scene",
                                             isPrimary ? "scene" : c.source, true, modules);
            ASSERT_FALSE(cameras) << c.source;
            const std::string& message = cameras.Why().message;
            EXPECT_NE(message.find(c.said), std::string::npos) << message;
            EXPECT_EQ(message.find('\n'), std::string::npos);
        }
    }
}

TEST(CameraSources, OfRealCamerasKeepRealTime) {
    EXPECT_TRUE(CheckSource("pipewire:some", true));
    const auto check = CheckSource("libcamera", false);
    ASSERT_FALSE(check);
    EXPECT_NE(check.Why().message.find("--clock real"), std::string::npos);
}

TEST(CameraChoice, IsByWhereTheyLookAndThenByTheirIds) {
    using enum Osp::Media::CameraFacing;
    const struct {
        std::vector<Osp::Media::CameraFacing> facing;  // of the cameras a, b, c ...
        std::string primary;
        std::string secondary;
    } cases[] = {{{}, "", ""},
                 {{kUnknown}, "a", ""},
                 {{kUnknown, kUnknown}, "a", "b"},
                 {{kFront, kBack}, "b", "a"},
                 {{kFront, kFront}, "a", "b"},
                 {{kFront, kUnknown}, "b", "a"},
                 {{kBack, kBack, kUnknown}, "a", "c"}};
    for (const auto& c : cases) {
        std::vector<Osp::Media::CameraInfo> found;
        for (const auto facing : c.facing) {
            Osp::Media::CameraInfo& camera = found.emplace_back();
            camera.id = std::string(1, static_cast<char>('a' + found.size() - 1));
            camera.facing = facing;
        }
        const auto primary = ChooseCamera(found, CameraSelection::kPrimary, std::nullopt);
        const auto secondary = ChooseCamera(found, CameraSelection::kSecondary, primary);
        EXPECT_EQ(primary.value_or("") + secondary.value_or(""), c.primary + c.secondary);
    }
}

}  // namespace
}  // namespace Host
