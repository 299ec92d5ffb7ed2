#include <osp/ui/controls/message_box.h>

#include "tests/support/ui_fixture.h"

namespace Osp::Ui {
namespace {

using namespace std::chrono_literals;
using Base::EventClass;
using Controls::MessageBox;
using Controls::MessageBoxStyle;
using Log = std::vector<std::string>;

class MessageBoxTest : public UiTest, public IActionEventListener {
  protected:
    void OnActionPerformed(const Control&, int) override { log_.push_back("action"); }

    /// Shows a box from an event of the application.
    void ShowBox(MessageBoxStyle style, int timeoutMs) {
        loop_.Loop().Post(EventClass::kApplication, [this, style, timeoutMs] {
            MessageBox box;
            ASSERT_EQ(box.Construct("WARNING", "one line\r\nand another", style, timeoutMs),
                      result::kSuccess);
            (void)box.ShowAndWait();
            log_.push_back("answered");
        });
    }
    void TapAt(Base::Duration when, Graphics::Point position) {
        loop_.Loop().StartTimer(EventClass::kSystem, when, [this, position] {
            input_.Press(position);
            input_.Release(position);
        });
    }
};

TEST_F(MessageBoxTest, OnlyItsButtonAnswersItAndEverythingElseWaits) {
    auto* const button = Add(new Controls::Button);
    ASSERT_EQ(button->Construct({0, 0, 100, 100}), result::kSuccess);
    button->AddActionEventListener(*this);
    ShowBox(MessageBoxStyle::kOk, 0);
    loop_.Loop().StartTimer(EventClass::kApplication, 10ms, [this] { log_.push_back("timer"); });
    TapAt(20ms, {50, 50});
    TapAt(60s, {400, 320});
    loop_.Pass(61s);
    EXPECT_EQ(log_, (Log{"answered", "timer"})) << "the touch of the button behind is not kept";
}

TEST_F(MessageBoxTest, WhatWasHeldDownBeforeWaitsForItsEnd) {
    auto* const button = Add(new Controls::Button);
    ASSERT_EQ(button->Construct({0, 0, 100, 100}), result::kSuccess);
    button->AddActionEventListener(*this);
    input_.Press({50, 50});
    ShowBox(MessageBoxStyle::kOk, 0);
    loop_.Loop().StartTimer(EventClass::kSystem, 10ms, [this] { input_.Release({50, 50}); });
    TapAt(20ms, {400, 320});
    loop_.Pass(1s);
    EXPECT_EQ(log_, (Log{"answered", "action"}));
}

TEST_F(MessageBoxTest, WhatIsRemovedWhileItIsHeldActsNoMore) {
    auto* const button = Add(new Controls::Button);
    ASSERT_EQ(button->Construct({0, 0, 100, 100}), result::kSuccess);
    button->AddActionEventListener(*this);
    input_.Press({50, 50});
    loop_.Loop().Post(EventClass::kApplication, [this, button] {
        (void)form_->RemoveControl(*button);
        MessageBox box;  // for as long as it waits the button lives
        ASSERT_EQ(box.Construct("", "text", MessageBoxStyle::kNone, 1000), result::kSuccess);
        (void)box.ShowAndWait();
    });
    loop_.Loop().StartTimer(EventClass::kSystem, 10ms, [this] { input_.Release({50, 50}); });
    loop_.Pass(2s);
    EXPECT_EQ(log_, Log{});
}

TEST_F(MessageBoxTest, DoesNotWaitInTheBackground) {
    screen_.SetForeground(false);
    ShowBox(MessageBoxStyle::kOk, 1000);
    loop_.Loop().Post(EventClass::kApplication,
                      [this] { EXPECT_EQ(loop_.Clock().Now(), Base::TimePoint(0)); });
    loop_.Pass(2s);
    EXPECT_EQ(log_, Log{"answered"});
}

TEST_F(MessageBoxTest, EndsWithItsTime) {
    ShowBox(MessageBoxStyle::kNone, 3000);
    long long answeredMs = 0;
    loop_.Loop().Post(EventClass::kApplication,
                      [this, &answeredMs] { answeredMs = loop_.Clock().Now().count() / 1000; });
    loop_.Pass(10s);
    EXPECT_EQ(answeredMs, 3000);
    MessageBox endless;
    EXPECT_EQ(endless.Construct("", "text", MessageBoxStyle::kNone, 0), result::kInvalidArgument);
}

TEST_F(MessageBoxTest, LiesAboveTheFormAndIsGoneAfterwards) {
    AddArea({0, 0, 800, 480}, kGreen);
    std::uint32_t during = 0;
    loop_.Loop().StartTimer(EventClass::kSystem, 10ms,
                            [this, &during] { during = PixelAt(400, 240); });
    ShowBox(MessageBoxStyle::kNone, 1000);
    loop_.Pass(2s);
    EXPECT_NE(during, 0x00FF00u);
    EXPECT_EQ(PixelAt(400, 240), 0x00FF00u);
}

TEST_F(MessageBoxTest, AnswersFromOutsideEndNestedBoxesToo) {
    ShowBox(MessageBoxStyle::kOk, 0);
    loop_.Loop().StartTimer(EventClass::kSystem, 5ms, [this] {
        MessageBox box;
        ASSERT_EQ(box.Construct("", "second", MessageBoxStyle::kOk, 0), result::kSuccess);
        (void)box.ShowAndWait();
        log_.push_back("second answered");
    });
    loop_.Loop().StartTimer(EventClass::kSystem, 10ms, [this] { screen_.AnswerModals(); });
    loop_.Pass(1s);
    EXPECT_EQ(log_, (Log{"second answered", "answered"}));
    EXPECT_FALSE(screen_.HasModal());
}

}  // namespace
}  // namespace Osp::Ui
