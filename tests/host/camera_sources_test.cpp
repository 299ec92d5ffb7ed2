#include "host/camera_sources.h"

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"
#include "tests/support/test_loop.h"

namespace Host {
namespace {

using Osp::Media::CameraSelection;

TEST(CameraSources, MakeWhatTheyNameAndSayWhatTheyCannot) {
    const Osp::Testing::TestLoop loop;
    const Osp::Testing::TemporaryFolder folder;
    auto one = MakeCameras("auto", "none");
    ASSERT_TRUE(one);
    EXPECT_EQ((*one)->Count(), 1);
    EXPECT_EQ((*one)->Id(CameraSelection::kPrimary), "scene");

    const struct {
        std::string source;
        const char* said;
        bool isKnown;
    } cases[] = {
        {"sceen", "unknown camera source 'sceen': it is auto, scene, photos:DIR or none", false},
        {"scene:", "'scene:'", false},
        {"", "''", false},
        {"photos", "'photos'", false},
        {"photos:" + folder.Path(), "no JPEG or PNG file", true},
        {"photos:/nowhere", "/nowhere", true},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(static_cast<bool>(CheckSource(c.source)), c.isKnown) << c.source;
        for (const bool isPrimary : {true, false}) {
            const auto cameras =
                isPrimary ? MakeCameras(c.source, "scene") : MakeCameras("scene", c.source);
            ASSERT_FALSE(cameras) << c.source;
            const std::string& message = cameras.Why().message;
            EXPECT_NE(message.find(c.said), std::string::npos) << message;
            EXPECT_EQ(message.find('\n'), std::string::npos);
        }
    }
}

}  // namespace
}  // namespace Host
