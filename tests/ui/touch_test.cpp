#include <memory>

#include "ui_fixture.h"

namespace Osp::Ui {
namespace {

using Log = std::vector<std::string>;

class TouchTest : public UiTest,
                  public ITouchEventListener,
                  public IActionEventListener,
                  public IKeyEventListener {
  protected:
    Controls::Button* AddButton(const Graphics::Rectangle& bounds, int actionId) {
        auto* const button = Add(new Controls::Button);
        EXPECT_EQ(button->Construct(bounds), result::kSuccess);
        button->SetActionId(actionId);
        button->AddActionEventListener(*this);
        button->AddTouchEventListener(*this);
        return button;
    }
    void Do(void (Input::*what)(Graphics::Point), Graphics::Point position) {
        (input_.*what)(position);
        loop_.Settle();
    }
    void Note(const char* what, const Graphics::Point& p) {
        log_.push_back(what + std::to_string(p.x) + "," + std::to_string(p.y));
    }

    void OnTouchPressed(const Control&, const Graphics::Point& p) override { Note("press ", p); }
    void OnTouchMoved(const Control&, const Graphics::Point& p) override { Note("move ", p); }
    void OnTouchReleased(const Control&, const Graphics::Point& p) override {
        Note("release ", p);
        if (deletedOnRelease_) (void)form_->RemoveControl(*deletedOnRelease_);
    }
    void OnActionPerformed(const Control&, int actionId) override {
        log_.push_back("action " + std::to_string(actionId));
    }
    void OnKeyPressed(const Control&, KeyCode) override { log_.push_back("key"); }
    void OnKeyReleased(const Control&, KeyCode) override {}
    void OnKeyLongPressed(const Control&, KeyCode) override {}

    Control* deletedOnRelease_ = nullptr;
};

TEST_F(TouchTest, AButtonReleasesBeforeItsActionWhichNeedsAReleaseInside) {
    AddButton({100, 100, 80, 80}, 7);
    Do(&Input::Press, {110, 120});
    Do(&Input::Move, {111, 121});
    Do(&Input::Release, {111, 121});
    EXPECT_EQ(log_, (Log{"press 110,120", "move 111,121", "release 111,121", "action 7"}));
    log_.clear();
    Do(&Input::Press, {110, 120});
    Do(&Input::Release, {300, 300});
    EXPECT_EQ(log_, (Log{"press 110,120", "release 300,300"})) << "it stays with the button";
}

TEST_F(TouchTest, TheTopmostControlThatListensGetsTheTouch) {
    AddButton({100, 100, 80, 80}, 7);
    AddArea({0, 0, 800, 480});  // neither a button nor listened to
    Do(&Input::Press, {110, 120});
    Do(&Input::Release, {110, 120});
    EXPECT_EQ(log_.back(), "action 7");
    Controls::Button* const above = AddButton({100, 100, 40, 40}, 8);
    Do(&Input::Press, {110, 120});
    Do(&Input::Release, {110, 120});
    EXPECT_EQ(log_.back(), "action 8");
    (void)above->SetShowState(false);
    Do(&Input::Press, {110, 120});
    Do(&Input::Release, {110, 120});
    EXPECT_EQ(log_.back(), "action 7");
}

TEST_F(TouchTest, ADisabledControlSwallowsTheTouch) {
    AddButton({100, 100, 80, 80}, 7);
    Controls::Button* const above = AddButton({100, 100, 80, 80}, 8);
    (void)above->SetEnabled(false);
    Do(&Input::Press, {110, 120});
    Do(&Input::Release, {110, 120});
    EXPECT_EQ(log_, Log{});
}

TEST_F(TouchTest, MovesOutsideTheScreenAreClamped) {
    AddButton({0, 0, 80, 80}, 7);
    Do(&Input::Press, {10, 10});
    Do(&Input::Move, {-50, 900});
    EXPECT_EQ(log_.back(), "move 0,479");
    Do(&Input::Move, {5000, -3});
    EXPECT_EQ(log_.back(), "move 799,0");
}

TEST_F(TouchTest, AControlMayGoInItsOwnCallback) {
    deletedOnRelease_ = AddButton({100, 100, 80, 80}, 7);
    Do(&Input::Press, {110, 120});
    Do(&Input::Release, {110, 120});
    EXPECT_EQ(log_, (Log{"press 110,120", "release 110,120"})) << "no action of what is gone";
    Do(&Input::Press, {110, 120});
    EXPECT_EQ(log_.size(), 2u);
}

TEST_F(TouchTest, AFingerTakenAwayActsOnNothing) {
    AddButton({100, 100, 80, 80}, 7);
    Do(&Input::Press, {110, 120});
    input_.Cancel();
    loop_.Settle();
    EXPECT_EQ(log_, (Log{"press 110,120", "release 110,120"}));
}

TEST_F(TouchTest, OnlyTheCurrentFormGetsKeys) {
    form_->AddKeyEventListener(*this);
    auto* const other = new Controls::Form;
    ASSERT_EQ(other->Construct(0), result::kSuccess);
    ASSERT_EQ(frame_.AddControl(other), result::kSuccess);
    input_.KeyPress(KeyCode::kCamera);
    loop_.Settle();
    EXPECT_EQ(log_, Log{"key"}) << "adding a form does not make it current";
    ASSERT_EQ(frame_.SetCurrentForm(other), result::kSuccess);
    input_.KeyPress(KeyCode::kCamera);
    loop_.Settle();
    EXPECT_EQ(log_.size(), 1u);
}

}  // namespace
}  // namespace Osp::Ui
