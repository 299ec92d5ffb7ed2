#include "osp/base/event_loop.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <osp/base/runtime/timer.h>

#include "osp/base/background.h"
#include "osp/base/event_source.h"
#include "tests/support/test_loop.h"

namespace Osp::Base {
namespace {

using namespace std::chrono_literals;
using Testing::TestLoop;

class EventLoopTest : public testing::Test {
  protected:
    EventLoop::Task Note(const std::string& what) {
        return [this, what] { log_.push_back(what); };
    }

    TestLoop test_;
    EventLoop& loop_ = test_.Loop();
    std::vector<std::string> log_;
};

using Log = std::vector<std::string>;

TEST_F(EventLoopTest, RunsTasksInTheirOrderAndTimersInTheOrderOfTheirTimes) {
    loop_.StartTimer(EventClass::kApplication, 20ms, Note("late"));
    loop_.StartTimer(EventClass::kApplication, 10ms, Note("early"));
    loop_.StartTimer(EventClass::kApplication, 10ms, Note("early too"));
    const auto cancelled = loop_.StartTimer(EventClass::kApplication, 5ms, Note("cancelled"));
    loop_.Post(EventClass::kApplication, Note("first"));
    loop_.Post(EventClass::kSystem, Note("second"));
    loop_.CancelTimer(cancelled);
    test_.Pass(19ms);
    EXPECT_EQ(log_, (Log{"first", "second", "early", "early too"}));
    test_.Pass(1ms);
    EXPECT_EQ(log_.back(), "late");
}

TEST_F(EventLoopTest, HoldsApplicationEventsBackAndDeliversThemAfterwardsInOrder) {
    loop_.Post(EventClass::kApplication, [this] {
        loop_.Post(EventClass::kApplication, Note("application"));
        loop_.StartTimer(EventClass::kApplication, 1ms, Note("timer of the application"));
        bool isAnswered = false;
        loop_.StartTimer(EventClass::kSystem, 5ms, [&isAnswered] { isAnswered = true; });
        loop_.Post(EventClass::kSystem, Note("system"));
        loop_.RunHoldingApplication([&isAnswered] { return isAnswered; });
        log_.push_back("answered");
    });
    test_.Pass(10ms);
    EXPECT_EQ(log_, (Log{"system", "answered", "application", "timer of the application"}));
}

struct Noting : Disposable {
    Noting(Log& ownLog, const char* ownName) : log(ownLog), name(ownName) {}
    ~Noting() override { log.push_back(name); }
    Log& log;
    const char* name;
};

TEST_F(EventLoopTest, DisposesOnlyWhenNoDispatchIsOnTheStack) {
    loop_.Post(EventClass::kApplication, [this] {
        loop_.DisposeLater(std::make_unique<Noting>(log_, "disposed"));
        bool isDone = false;
        loop_.Post(EventClass::kSystem, [&isDone] { isDone = true; });
        loop_.RunHoldingApplication([&isDone] { return isDone; });
        log_.push_back("returned");
    });
    test_.Settle();
    EXPECT_EQ(log_, (Log{"returned", "disposed"}));
}

TEST_F(EventLoopTest, ADroppedSourceTakesBackWhatItPosted) {
    EventSource source;
    source.Post(Note("dropped"));
    source.Drop();
    source.Post(Note("posted after that"));
    auto other = std::make_unique<EventSource>();
    const auto poster = other->Poster();
    poster(Note("of a source that is gone"));
    other.reset();
    poster(Note("through its handle"));
    test_.Settle();
    EXPECT_EQ(log_, (Log{"posted after that"}));
}

TEST_F(EventLoopTest, HearsOfWorkInTheOrderOfItsBeginningAndAfterWhatIsReady) {
    loop_.Post(EventClass::kApplication, [this] {
        RunInBackground([] { std::this_thread::sleep_for(30ms); }, Note("slow work"));
        RunInBackground([] {}, Note("quick work"));
        RunInBackground([] {}, Note("more quick work"));
        std::this_thread::sleep_for(60ms);  // all of it is done before the next event
        loop_.StartTimer(EventClass::kApplication, 0ms, Note("due timer"));
        loop_.Post(EventClass::kSystem, Note("posted"));
    });
    test_.Pass(0ms);
    EXPECT_EQ(log_, (Log{"posted", "due timer", "slow work", "quick work", "more quick work"}));
}

TEST_F(EventLoopTest, TimeWaitsForBackgroundWork) {
    loop_.StartTimer(EventClass::kApplication, 1ms, Note("timer"));
    RunInBackground([] { std::this_thread::sleep_for(30ms); }, Note("work"));
    test_.Pass(1ms);
    EXPECT_EQ(log_, (Log{"work", "timer"}));
}

class TimerTest : public EventLoopTest, public Runtime::ITimerEventListener {
  protected:
    void OnTimerExpired(Runtime::Timer&) override { log_.push_back("expired"); }
};

TEST_F(TimerTest, ExpiresOnceAndNotWhenItWasCancelledOrDeletedAtTheLastMoment) {
    auto timer = std::make_unique<Runtime::Timer>();
    ASSERT_EQ(timer->Construct(*this), result::kSuccess);
    EXPECT_EQ(timer->Start(-1), result::kInvalidArgument);
    ASSERT_EQ(timer->Start(100), result::kSuccess);
    EXPECT_EQ(timer->Start(100), result::kInvalidState) << "it runs already";
    test_.Pass(99ms);
    EXPECT_TRUE(log_.empty());
    test_.Pass(1s);
    EXPECT_EQ(log_, (Log{"expired"}));

    // These run at the moment of the expiry, just before it.
    loop_.StartTimer(EventClass::kSystem, 50ms, [&timer] { (void)timer->Cancel(); });
    ASSERT_EQ(timer->Start(50), result::kSuccess);
    test_.Pass(100ms);
    loop_.StartTimer(EventClass::kSystem, 50ms, [&timer] { timer.reset(); });
    ASSERT_EQ(timer->Start(50), result::kSuccess);
    test_.Pass(1s);
    EXPECT_EQ(log_.size(), 1u);
}

// Only builds with asserts notice; the others do what is harmless here.
TEST_F(EventLoopTest, IsRunAndDroppedByItsOwnThreadOnly) {
    EventSource source;
    EXPECT_DEBUG_DEATH(std::thread([this] { loop_.CancelTimer(1); }).join(), "IsLoopThread");
    EXPECT_DEBUG_DEATH(std::thread([&source] { source.Drop(); }).join(), "IsLoopThread");
    EXPECT_DEBUG_DEATH(loop_.StartTimer(EventClass::kSystem, -1ms, [] {}), "delay");
}

}  // namespace
}  // namespace Osp::Base
