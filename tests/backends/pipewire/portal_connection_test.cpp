// Through the portal to the daemon, and again when it is lost.
#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>

#include "backends/pipewire/pipewire_connection.h"
#include "tests/backends/pipewire/fake_portal.h"
#include "tests/support/programs/camera_stack.h"

namespace Osp::Media {
namespace {

using namespace std::chrono_literals;
using Testing::Within;
using Way = PipewireConnection::Way;

constexpr auto kLimit = 10s;
constexpr auto kMoment = 200ms;

/// What a portal opens: a connection with the daemon, or nothing while there is none.
int ConnectToDaemon() {
    const std::string path = std::string(std::getenv("PIPEWIRE_RUNTIME_DIR")) + "/pipewire-0";
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    Io::FileDescriptor descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const int result =
        connect(descriptor.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address);
    return result == 0 ? descriptor.Release() : -1;
}

class PortalConnectionTest : public testing::Test {
  protected:
    PortalConnectionTest() {
        pw_init(nullptr, nullptr);
        portal_.open = ConnectToDaemon;
    }

    static std::size_t Look(PipewireConnection& connection) {
        connection.WaitUntilKnown(1s);
        const PipewireConnection::Lock lock(connection);
        return connection.Graph() == nullptr ? 0 : connection.Graph()->Cameras().size();
    }
    static Way TakenWay(const PipewireConnection& connection) {
        const PipewireConnection::Lock lock(connection);
        return connection.TakenWay();
    }
    static bool Becomes(PipewireConnection& connection, PortalState state) {
        return Within(kLimit, [&] {
            const PipewireConnection::Lock lock(connection);
            return connection.Portals() && connection.Portals()->state == state;
        });
    }

    Testing::CameraStack stack_;
    FakePortal portal_;  // its bus takes the place of the stack's
    Testing::VirtualCamera camera_{"webcam"};
};

TEST_F(PortalConnectionTest, ASandboxSeesTheCameraThroughThePortalAloneAndFindsItAgain) {
    PipewireConnection connection(true);
    EXPECT_EQ(Look(connection), 1U);
    EXPECT_EQ(TakenWay(connection), Way::kPortal);
    EXPECT_EQ(portal_.questions, 1);

    stack_.KillDaemon();
    std::this_thread::sleep_for(kMoment);
    EXPECT_EQ(portal_.questions, 1) << "the portal has had no time to notice";
    EXPECT_TRUE(Becomes(connection, PortalState::kFailed)) << "asked while there is no daemon";
    stack_.Start();
    camera_.AwaitReady();
    EXPECT_TRUE(Within(kLimit, [&] { return Look(connection) == 1; }));

    portal_.response = FakePortal::Response::kNo;
    stack_.KillDaemon();
    EXPECT_TRUE(Becomes(connection, PortalState::kRefused));
    const int questions = portal_.questions;
    stack_.Start();
    camera_.AwaitReady();
    std::this_thread::sleep_for(1s + kMoment);
    EXPECT_EQ(Look(connection), 0U) << "a no is not gone around";
    EXPECT_EQ(portal_.questions, questions) << "and not asked for again";
}

TEST_F(PortalConnectionTest, ALookDoesNotWaitForTheUserWhoseLateYesIsUsed) {
    portal_.manner = FakePortal::Manner::kSilent;
    PipewireConnection connection(true);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(Look(connection), 0U);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1s + kMoment);
    camera_.Vanish();
    portal_.Respond();
    const std::jthread sessionManager([this] {
        std::this_thread::sleep_for(kMoment);
        camera_.Send("return");
    });
    EXPECT_EQ(Look(connection), 1U) << "a sandbox is shown its cameras later";
}

TEST_F(PortalConnectionTest, OutsideOfASandboxThePortalIsAskedOnlyWhereNoDaemonWasEverReached) {
    {
        PipewireConnection connection(false);
        EXPECT_EQ(Look(connection), 1U);
        EXPECT_EQ(TakenWay(connection), Way::kDirect);
        stack_.KillDaemon();
        std::this_thread::sleep_for(kMoment);
        EXPECT_EQ(portal_.questions, 0);
        stack_.Start();
        camera_.AwaitReady();
    }
    setenv("PIPEWIRE_REMOTE", "elsewhere", 1);
    {
        PipewireConnection connection(false);
        EXPECT_EQ(Look(connection), 1U);
        EXPECT_EQ(TakenWay(connection), Way::kPortal);
    }
    unsetenv("PIPEWIRE_REMOTE");
}

TEST_F(PortalConnectionTest, ASandboxWithoutAPortalIsShownTheDaemonOrNothing) {
    portal_.Crash();
    PipewireConnection connection(true);
    EXPECT_EQ(Look(connection), 1U);
    EXPECT_EQ(TakenWay(connection), Way::kDirect);
}

}  // namespace
}  // namespace Osp::Media
