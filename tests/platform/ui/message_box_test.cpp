#include <functional>

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

    void Show(MessageBoxStyle style, int timeoutMs, const char* note) {
        MessageBox box;
        ASSERT_EQ(box.Construct("WARNING", "one line\r\nand another", style, timeoutMs),
                  result::kSuccess);
        (void)box.ShowAndWait();
        log_.push_back(note);
    }
    /// From an event of the application.
    void ShowLater(MessageBoxStyle style, int timeoutMs) {
        loop_.Loop().Post(EventClass::kApplication,
                          [this, style, timeoutMs] { Show(style, timeoutMs, "answered"); });
    }
    void At(Base::Duration when, std::function<void()> task) {
        loop_.Loop().StartTimer(EventClass::kSystem, when, std::move(task));
    }
    void TapAt(Base::Duration when, Graphics::Point position) {
        At(when, [this, position] {
            input_.Press(position);
            input_.Release(position);
        });
    }
    /// Whose action is noted.
    Controls::Button* AddNotedButton() {
        auto* const button = AddButton({0, 0, 100, 100});
        button->AddActionEventListener(*this);
        return button;
    }
};

TEST_F(MessageBoxTest, OnlyItsButtonAnswersItAndEverythingElseWaits) {
    AddNotedButton();
    ShowLater(MessageBoxStyle::kOk, 0);
    loop_.Loop().StartTimer(EventClass::kApplication, 10ms, [this] { log_.push_back("timer"); });
    TapAt(20ms, {50, 50});
    TapAt(60s, {400, 320});
    loop_.Pass(61s);
    EXPECT_EQ(log_, (Log{"answered", "timer"})) << "the touch of the button behind is not kept";
}

TEST_F(MessageBoxTest, WhatWasHeldDownBeforeWaitsForItsEnd) {
    AddNotedButton();
    input_.Press({50, 50});
    ShowLater(MessageBoxStyle::kOk, 0);
    At(10ms, [this] { input_.Release({50, 50}); });
    TapAt(20ms, {400, 320});
    loop_.Pass(1s);
    EXPECT_EQ(log_, (Log{"answered", "action"}));
}

TEST_F(MessageBoxTest, WhatIsRemovedWhileItIsHeldActsNoMore) {
    auto* const button = AddNotedButton();
    input_.Press({50, 50});
    loop_.Loop().Post(EventClass::kApplication, [this, button] {
        (void)form_->RemoveControl(*button);
        Show(MessageBoxStyle::kNone, 1000, "answered");  // and so long the button lives
    });
    At(10ms, [this] { input_.Release({50, 50}); });
    loop_.Pass(2s);
    EXPECT_EQ(log_, Log{"answered"});
}

TEST_F(MessageBoxTest, DoesNotWaitInTheBackground) {
    screen_.SetForeground(false);
    ShowLater(MessageBoxStyle::kOk, 1000);
    loop_.Loop().Post(EventClass::kApplication,
                      [this] { EXPECT_EQ(loop_.Clock().Now(), Base::TimePoint(0)); });
    loop_.Pass(2s);
    EXPECT_EQ(log_, Log{"answered"});
}

TEST_F(MessageBoxTest, LiesAboveTheFormUntilItsTimeIsOver) {
    AddArea({0, 0, 800, 480}, kGreen);
    std::uint32_t during = 0;
    ShowLater(MessageBoxStyle::kNone, 3000);
    At(2999ms, [this, &during] {
        during = PixelAt(400, 240);
        log_.push_back("seen");
    });
    loop_.Pass(3s);
    EXPECT_EQ(log_, (Log{"seen", "answered"}));
    EXPECT_NE(during, 0x00FF00u);
    EXPECT_EQ(PixelAt(400, 240), 0x00FF00u);
    MessageBox endless;
    EXPECT_EQ(endless.Construct("", "text", MessageBoxStyle::kNone, 0), result::kInvalidArgument);
}

TEST_F(MessageBoxTest, AnswersFromOutsideEndNestedBoxesToo) {
    ShowLater(MessageBoxStyle::kOk, 0);
    At(5ms, [this] { Show(MessageBoxStyle::kOk, 0, "second answered"); });
    At(10ms, [this] { screen_.AnswerModals(); });
    loop_.Pass(1s);
    EXPECT_EQ(log_, (Log{"second answered", "answered"}));
    EXPECT_FALSE(screen_.HasModal());
}

}  // namespace
}  // namespace Osp::Ui
