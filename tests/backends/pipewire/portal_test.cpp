#include "backends/pipewire/portal.h"

#include <array>
#include <condition_variable>
#include <cstdlib>
#include <deque>
#include <gtest/gtest.h>
#include <sys/socket.h>

#include "tests/backends/pipewire/fake_portal.h"
#include "tests/support/programs/process.h"

namespace Osp::Media {
namespace {

using namespace std::chrono_literals;
using Manner = FakePortal::Manner;
using Response = FakePortal::Response;
using Io::FileDescriptor;

constexpr auto kLimit = 5s;
constexpr auto kMoment = 100ms;

/// What a portal tells, in turn.
class Told {
  public:
    void Add(PortalAnswer answer) {
        const std::lock_guard guard(mutex_);
        answers_.push_back(std::move(answer));
        came_.notify_one();
    }
    /// kAsking when nothing comes in time.
    PortalAnswer Next(std::chrono::milliseconds limit = kLimit) {
        std::unique_lock lock(mutex_);
        if (!came_.wait_for(lock, limit, [this] { return !answers_.empty(); })) return {};
        PortalAnswer answer = std::move(answers_.front());
        answers_.pop_front();
        return answer;
    }

  private:
    std::mutex mutex_;
    std::condition_variable came_;
    std::deque<PortalAnswer> answers_;
};

/// A portal that has been asked.
struct AskedPortal {
    AskedPortal() { portal.Ask(); }
    Told told;
    Portal portal{[this](PortalAnswer answer) { told.Add(std::move(answer)); }};
};

class PortalTest : public testing::Test {
  protected:
    PortalTest() {
        service_.open = [this] {
            int ends[2];
            EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
            other_ = FileDescriptor(ends[1]);
            return ends[0];
        };
    }

    /// Expects the connection that the service has opened last.
    void ExpectGranted(const PortalAnswer& answer) const {
        ASSERT_EQ(answer.state, PortalState::kGranted) << answer.error;
        char letter = 0;
        EXPECT_EQ(write(other_.Get(), "k", 1), 1);
        EXPECT_EQ(recv(answer.remote.Get(), &letter, 1, MSG_DONTWAIT), 1);
        EXPECT_EQ(letter, 'k');
    }
    void AwaitQuestions(int count) {
        EXPECT_TRUE(Testing::Within(kLimit, [&] { return service_.questions == count; }));
    }

    FileDescriptor other_;
    FakePortal service_;
};

TEST_F(PortalTest, GivesTheConnectionHoweverTheYesComes) {
    for (const Manner manner : {Manner::kPrompt, Manner::kOvertake, Manner::kOldPath}) {
        service_.manner = manner;
        AskedPortal asked;
        ExpectGranted(asked.told.Next());
        asked.portal.Ask();
        ExpectGranted(asked.told.Next());
    }
}

TEST_F(PortalTest, TellsTheAnswersThatAreNoYesApart) {
    constexpr std::array kAnswers = {std::pair(Response::kNo, PortalState::kRefused),
                                     std::pair(Response::kEnd, PortalState::kEnded)};
    for (const auto& [response, state] : kAnswers) {
        service_.response = response;
        EXPECT_EQ(AskedPortal().told.Next().state, state);
    }
    service_.response = Response::kYes;
    service_.open = [] { return -1; };
    const PortalAnswer denied = AskedPortal().told.Next();
    EXPECT_EQ(denied.state, PortalState::kFailed);
    EXPECT_EQ(denied.error, "not allowed");
}

TEST_F(PortalTest, WaitsForALateAnswerUntilTheServiceOrItselfEnds) {
    service_.manner = Manner::kSilent;
    AskedPortal asked;
    AwaitQuestions(1);
    EXPECT_EQ(asked.told.Next(kMoment).state, PortalState::kAsking);
    service_.Respond();
    ExpectGranted(asked.told.Next());

    const auto start = std::chrono::steady_clock::now();
    {
        const AskedPortal ended;
        AwaitQuestions(2);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1s);

    asked.portal.Ask();
    AwaitQuestions(3);
    service_.Crash();
    EXPECT_EQ(asked.told.Next().state, PortalState::kFailed);
}

TEST_F(PortalTest, AsksOnceThereIsACamera) {
    service_.SetCamera(false);
    AskedPortal asked;
    EXPECT_EQ(asked.told.Next().state, PortalState::kNoCamera);
    EXPECT_EQ(asked.told.Next(kMoment).state, PortalState::kAsking) << "nothing is told";
    EXPECT_EQ(service_.questions, 0);
    service_.SetCamera(true);
    EXPECT_EQ(asked.told.Next().state, PortalState::kAsking);
    ExpectGranted(asked.told.Next());
}

TEST(PortalSurroundingsTest, TellWhatIsMissing) {
    {
        const FakePortal other("org.example.NoPortal");
        EXPECT_EQ(AskedPortal().told.Next().state, PortalState::kNoPortal);
    }
    {
        FakePortal other;
        other.manner = Manner::kNoCameras;
        EXPECT_EQ(AskedPortal().told.Next().state, PortalState::kNoPortal);
    }
    setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
    EXPECT_EQ(AskedPortal().told.Next().state, PortalState::kNoBus);
}

}  // namespace
}  // namespace Osp::Media
