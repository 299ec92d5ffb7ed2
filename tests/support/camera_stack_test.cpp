// The stack that other tests stand on.
#include "tests/support/camera_stack.h"

#include <gtest/gtest.h>

namespace Osp::Testing {
namespace {

using namespace std::chrono_literals;

/// What the daemon says of the node; empty when there is none.
std::string NodeInfo(const std::string& name) {
    const std::string nodes = OutputOf({"pw-cli", "ls", "Node"});
    if (nodes.find("node.name = \"" + name + "\"") == std::string::npos) return {};
    return OutputOf({"pw-cli", "info", name});
}

bool Has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST(CameraStackTest, CamerasComeAndGo) {
    CameraStack stack;
    VirtualCamera front("front-camera", {"--description", "Front", "--facing", "front",
                                         "--property", "device.api=test"});
    VirtualCamera back("back-camera");
    const std::string info = NodeInfo("front-camera");
    for (const char* part : {"media.class = \"Video/Source\"", "node.description = \"Front\"",
                             "api.libcamera.location = \"front\"", "device.api = \"test\""}) {
        EXPECT_TRUE(Has(info, part)) << part << " is not in " << info;
    }
    EXPECT_NE(front.Id(), back.Id());

    front.Vanish();
    EXPECT_TRUE(Within(5s, [] { return NodeInfo("front-camera").empty(); }));
    EXPECT_FALSE(NodeInfo("back-camera").empty());
    front.Return();
    EXPECT_FALSE(NodeInfo("front-camera").empty());
    front.Kill();
    EXPECT_TRUE(Within(5s, [] { return NodeInfo("front-camera").empty(); }));
}

TEST(CameraStackTest, CamerasSurviveTheDaemon) {
    CameraStack stack;
    VirtualCamera camera("camera");
    stack.KillSessionManager();
    stack.Start();
    EXPECT_FALSE(camera.Says("lost", 200ms));
    stack.KillDaemon();
    camera.Await("lost");
    EXPECT_EQ(NodeInfo("camera"), "");
    stack.Start();
    camera.AwaitReady();
    EXPECT_FALSE(NodeInfo("camera").empty());
}

}  // namespace
}  // namespace Osp::Testing
