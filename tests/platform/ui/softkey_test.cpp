// Soft keys: shown with a text, above what the form holds, used like buttons.
#include <osp/ui/controls/popup.h>

#include "tests/support/ui_fixture.h"

namespace Osp::Ui {
namespace {

using Log = std::vector<std::string>;
using enum Controls::SoftkeyPosition;

constexpr Graphics::Point kLeftKey{74, 446};
constexpr Graphics::Point kRightKey{726, 446};
constexpr Graphics::Point kBesideText{20, 446};  // still on the left key
constexpr std::uint32_t kCream = 0xFAF5EA;

class SoftkeyTest : public NotingUiTest {
  protected:
    SoftkeyTest() {
        form_->AddKeyEventListener(*this);
        EXPECT_EQ(form_->Construct(Controls::kFormStyleSoftkeys), result::kSuccess);
        int id = 1;
        for (const auto position : {kLeft, kRight}) {
            EXPECT_EQ(form_->SetSoftkeyActionId(position, id++), result::kSuccess);
            EXPECT_EQ(form_->AddSoftkeyActionListener(position, *this), result::kSuccess);
        }
    }
    void Name(Controls::SoftkeyPosition position, const char* text) {
        EXPECT_EQ(form_->SetSoftkeyText(position, text), result::kSuccess);
    }
    void Key(KeyCode code) {
        input_.KeyPress(code);
        input_.KeyRelease(code);
        loop_.Settle();
    }
    std::uint32_t LeftKeyColor() { return PixelAt(kBesideText.x, kBesideText.y); }
};

TEST_F(SoftkeyTest, AreThereWhileTheyHaveAText) {
    Tap(kLeftKey);
    Key(KeyCode::kSoftKey0);
    EXPECT_EQ(log_, (Log{"key 2", "key up"})) << "without a text the key is the form's";
    log_.clear();
    Name(kLeft, "More");
    Name(kRight, "Close");
    Tap(kLeftKey);
    Tap(kRightKey);
    Key(KeyCode::kSoftKey0);
    Key(KeyCode::kSoftKey1);
    EXPECT_EQ(log_, (Log{"action 1", "action 2", "action 1", "action 2"}));
    log_.clear();
    Name(kRight, "");
    Tap(kRightKey);
    input_.FocusNext(false);
    input_.Confirm();
    loop_.Settle();
    EXPECT_EQ(log_, Log{"action 1"}) << "the ring finds the one that is left";
}

TEST_F(SoftkeyTest, LieAboveWhatTheFormHoldsHoweverItIsRaised) {
    Name(kLeft, "More");
    auto* const first = AddArea({0, 0, 800, 480});
    AddArea({0, 0, 800, 480}, kGreen);
    (void)first->Show();
    EXPECT_EQ(PixelAt(400, 240), 0xFF0000u) << "raised among the others";
    EXPECT_NE(LeftKeyColor(), 0xFF0000u);
    Tap(kLeftKey);
    EXPECT_EQ(log_, Log{"action 1"});
    log_.clear();
    Controls::Popup popup;
    ASSERT_EQ(popup.Construct("", {200, 100}), result::kSuccess);
    (void)popup.SetShowState(true);
    Tap(kLeftKey);
    Key(KeyCode::kSoftKey0);
    EXPECT_EQ(log_, Log{}) << "a popup takes all input";
}

TEST_F(SoftkeyTest, ShowThatTheyArePressedAndAreLetGoWithoutActing) {
    Name(kLeft, "More");
    EXPECT_NE(LeftKeyColor(), kCream);
    input_.KeyPress(KeyCode::kSoftKey0);
    EXPECT_EQ(LeftKeyColor(), kCream);
    input_.LetGo();
    EXPECT_NE(LeftKeyColor(), kCream);
    input_.KeyRelease(KeyCode::kSoftKey0);
    loop_.Settle();
    EXPECT_EQ(log_, Log{});
}

}  // namespace
}  // namespace Osp::Ui
