#include <osp/ui/controls/message_box.h>

#include "tests/platform/ui/text/text_fixture.h"

namespace Osp::Ui {
namespace {

using namespace std::chrono_literals;
using Base::EventClass;
using Log = std::vector<std::string>;

class PopupTest : public TextTest {
  protected:
    PopupTest() {
        AddArea({0, 0, 800, 480}, kGreen);
        below_ = AddButton({0, 0, 800, 480});
        below_->AddActionEventListener(*this);
        button_->AddActionEventListener(*this);
        form_->AddKeyEventListener(*this);
        (void)screen_.Compose();
    }
    void OnActionPerformed(const Control& source, int) override {
        log_.push_back(&source == button_ ? "popup" : "form");
    }
    void OnKeyPressed(const Control&, KeyCode key) override {
        log_.push_back(key == KeyCode::kBack ? "back" : "key");
    }
    void OnKeyReleased(const Control&, KeyCode) override {}

    Controls::Button* below_;
};

TEST_F(PopupTest, LiesAboveTheDarkenedFormAndMovesForTheKeyboard) {
    Open();
    EXPECT_EQ(popup_->GetBounds().y, 0);
    EXPECT_EQ(PixelAt(161, 1), 0xFAF5EAu) << "hangs from the edge, so without upper corners";
    EXPECT_EQ(PixelAt(100, 100), 0x006600u);
    EXPECT_NE(PixelAt(100, 470), 0x006600u) << "the keyboard";
    Tap(kHide);
    EXPECT_EQ(popup_->GetBounds().y, 85);
    EXPECT_EQ(PixelAt(161, 86), 0x006600u) << "a round corner";
    EXPECT_EQ(PixelAt(400, 1), 0x006600u);
    EXPECT_EQ(PixelAt(170, 240), 0xFAF5EAu);
    (void)popup_->SetShowState(false);
    EXPECT_EQ(PixelAt(400, 240), 0x00FF00u);
}

TEST_F(PopupTest, TakesTheTouchesAndAllKeysButTheWayBack) {
    Tap({10, 10});
    Open();
    Tap({10, 10});
    Tap({315, 260});
    input_.KeyPress(KeyCode::kCamera);
    input_.KeyPress(KeyCode::kBack);
    input_.FocusNext(false);
    EXPECT_EQ(screen_.GetFocus(), button_);
    (void)popup_->SetShowState(false);
    Tap({10, 10});
    EXPECT_EQ(log_, (Log{"form", "popup", "back", "form"}));
}

TEST_F(PopupTest, LetsEventsOfTheApplicationThroughAndAMessageBoxLieAbove) {
    Open();
    loop_.Loop().StartTimer(EventClass::kApplication, 10ms, [this] {
        log_.push_back("timer");
        Controls::MessageBox box;
        (void)box.Construct("", "text", Controls::MessageBoxStyle::kNone, 1000);
        (void)box.ShowAndWait();
    });
    loop_.Loop().StartTimer(EventClass::kSystem, 500ms, [this] {
        EXPECT_EQ(textInput_.GetTarget(), nullptr);
        textInput_.Insert("lost");
        for (const Graphics::Point place : {kQ, Graphics::Point{315, 260}}) {
            input_.Press(place);
            input_.Release(place);
        }
        EXPECT_EQ(screen_.GetRoots().back(), screen_.GetInputRoot()) << "no keyboard";
    });
    loop_.Pass(2s);
    EXPECT_EQ(log_, Log{"timer"});
    EXPECT_EQ(textInput_.GetTarget(), area_);
    Tap(kQ);
    EXPECT_EQ(Text(), "q");
}

TEST_F(PopupTest, StaysThroughTheBackgroundAndEndsWithItsOwner) {
    Open();
    screen_.SetForeground(false);
    input_.LetGo();
    loop_.Settle();
    EXPECT_EQ(textInput_.GetTarget(), nullptr);
    screen_.SetForeground(true);
    EXPECT_EQ(textInput_.GetTarget(), area_);
    EXPECT_TRUE(screen_.IsKeyboardShown());
    popup_.reset();
    EXPECT_FALSE(screen_.IsKeyboardShown());
    EXPECT_EQ(textInput_.GetTarget(), nullptr);
    Tap({10, 10});
    EXPECT_EQ(log_, Log{"form"});
}

TEST_F(PopupTest, AFingerPlacesTheCaretSelectsWordsAndScrolls) {
    Open();
    (void)area_->SetText("one two");
    const Graphics::Point first{205, 86};
    Tap(first);
    textInput_.Insert(">");
    EXPECT_EQ(Text(), ">one two");
    loop_.Pass(1s);
    Tap({230, 86});
    Tap({230, 86});
    EXPECT_EQ(textInput_.GetSelection(), "one");
    Tap(kQ);
    EXPECT_EQ(Text(), ">q two");

    (void)area_->SetText("1\n2\n3\n4\n5\n6\n7\n8");
    const int bottom = textInput_.GetCaret().y;
    EXPECT_LT(bottom, 56 + 154) << "the caret is in view";
    input_.Press({300, 100});
    input_.Move({300, 140});
    input_.Release({300, 140});
    EXPECT_EQ(textInput_.GetCaret().y, bottom + 40) << "scrolled, and the caret where it was";
    textInput_.Insert("9");
    EXPECT_EQ(textInput_.GetCaret().y, bottom) << "typing brings it back";
    textInput_.Move(CaretMove::kLineAbove, false);
    textInput_.Move(CaretMove::kLineStart, true);
    EXPECT_EQ(textInput_.GetSelection(), "7");
}

}  // namespace
}  // namespace Osp::Ui
