#include "osp/app/lifecycle.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <osp/ui/controls/message_box.h>

#include "osp/app/registry_file.h"
#include "osp/ui/input.h"
#include "osp/ui/screen.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/test_loop.h"

namespace Osp::App {
namespace {

using namespace std::chrono_literals;
using Base::EventClass;
using Log = std::vector<std::string>;

Log events;
bool mayStart = true;

class NotingApplication : public Application {
  public:
    static Application* CreateInstance() { return new NotingApplication; }

    bool OnAppInitializing(AppRegistry&) override {
        events.push_back("initializing");
        return mayStart;
    }
    bool OnAppTerminating(AppRegistry& registry, bool urgent) override {
        events.push_back(urgent ? "terminating at once" : "terminating");
        (void)registry.Add("LAST", 1);  // and not saved
        return true;
    }
    void OnForeground() override { events.push_back("foreground"); }
    void OnBackground() override { events.push_back("background"); }
    void OnLowMemory() override {}
    void OnBatteryLevelChanged(System::BatteryLevel) override {}
};

class LifecycleTest : public testing::Test, private Base::LoopDriver {
  protected:
    LifecycleTest() {
        events.clear();
        mayStart = true;
        loop_.SetDriver(this);
    }
    ~LifecycleTest() override { loop_.SetDriver(nullptr); }

    /// What happens one after the other once the application runs.
    void Then(std::function<void()> step) { steps_.push_back(std::move(step)); }

    result Run() { return Application::Execute(NotingApplication::CreateInstance, nullptr); }

    bool OnIdle() override {
        if (!steps_.empty()) {
            const auto step = steps_.front();
            steps_.erase(steps_.begin());
            loop_.Post(EventClass::kSystem, step);
        } else if (const auto due = loop_.NextDue()) {
            clock_.AdvanceTo(*due);
        }
        return true;
    }

    Testing::TemporaryFolder folder_;
    Base::VirtualClock clock_;
    Base::EventLoop loop_{clock_};
    Base::EventLoop::Installed installedLoop_{loop_};
    Ui::Screen screen_;
    Ui::Screen::Installed installedScreen_{screen_};
    Ui::Input input_;
    Ui::Input::Installed installedInput_{input_};
    RegistryFile settings_{folder_ / "registry.ini"};
    Lifecycle lifecycle_{settings_};
    Lifecycle::Installed installed_{lifecycle_};
    std::vector<std::function<void()>> steps_;
};

TEST_F(LifecycleTest, ForegroundAndBackgroundAlternateWhateverTheHostReports) {
    Then([this] { lifecycle_.EnterForeground(); });
    Then([this] { lifecycle_.EnterBackground(); });
    Then([this] { lifecycle_.EnterBackground(); });
    Then([this] { lifecycle_.EnterForeground(); });
    Then([this] { lifecycle_.Terminate(false); });
    EXPECT_EQ(Run(), result::kSuccess);
    EXPECT_EQ(events,
              (Log{"initializing", "foreground", "background", "foreground", "terminating"}));
    EXPECT_EQ(Application::GetInstance(), nullptr);
    EXPECT_EQ(RegistryFile(folder_ / "registry.ini").Values().count("LAST"), 1u)
        << "what the application has not saved";
}

TEST_F(LifecycleTest, GoingToTheBackgroundAnswersAMessageBoxBeforeTheApplicationHearsOfIt) {
    Then([this] {
        loop_.Post(EventClass::kApplication, [] {
            Ui::Controls::MessageBox box;
            ASSERT_EQ(box.Construct("", "text", Ui::Controls::MessageBoxStyle::kOk, 0),
                      result::kSuccess);
            (void)box.ShowAndWait();
            events.push_back("answered");
        });
    });
    Then([this] { lifecycle_.EnterBackground(); });
    Then([this] { lifecycle_.Terminate(true); });
    EXPECT_EQ(Run(), result::kSuccess);
    EXPECT_EQ(events,
              (Log{"initializing", "foreground", "answered", "background", "terminating at once"}));
}

TEST_F(LifecycleTest, AnApplicationThatCannotStartIsAFailureAndHearsNothingMore) {
    mayStart = false;
    EXPECT_EQ(Run(), result::kFailure);
    EXPECT_EQ(events, Log{"initializing"});
    EXPECT_FALSE(lifecycle_.HasStarted());
}

}  // namespace
}  // namespace Osp::App
