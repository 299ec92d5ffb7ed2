#include <functional>
#include <memory>

#include "tests/support/ui_fixture.h"

namespace Osp::Ui {
namespace {

using Log = std::vector<std::string>;

class TouchTest : public NotingUiTest, public ITouchEventListener {
  protected:
    Controls::Button* AddButton(const Graphics::Rectangle& bounds, int actionId) {
        auto* const button = UiTest::AddButton(bounds);
        button->SetActionId(actionId);
        button->AddActionEventListener(*this);
        button->AddTouchEventListener(*this);
        return button;
    }
    void Do(void (Input::*what)(Graphics::Point), Graphics::Point position) {
        (input_.*what)(position);
        loop_.Settle();
    }
    void Tap() { NotingUiTest::Tap({110, 120}); }
    void PressKey() {
        input_.KeyPress(KeyCode::kCamera);
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
    Controls::Form* AddForm() {
        auto* const form = new Controls::Form;
        EXPECT_EQ(form->Construct(0), result::kSuccess);
        EXPECT_EQ(frame_.AddControl(form), result::kSuccess);
        return form;
    }
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
    log_.clear();
    Do(&Input::Press, {110, 120});
    input_.Cancel();
    loop_.Settle();
    EXPECT_EQ(log_, (Log{"press 110,120", "release 110,120"})) << "taken away";
}

TEST_F(TouchTest, TheTopmostControlThatListensGetsTheTouch) {
    AddButton({100, 100, 80, 80}, 7);
    AddArea({0, 0, 800, 480});  // neither a button nor listened to
    Tap();
    EXPECT_EQ(log_.back(), "action 7");
    Controls::Button* const above = AddButton({100, 100, 40, 40}, 8);
    Tap();
    EXPECT_EQ(log_.back(), "action 8");
    (void)above->SetShowState(false);
    Tap();
    EXPECT_EQ(log_.back(), "action 7");
    (void)above->SetShowState(true);
    (void)above->SetEnabled(false);
    log_.clear();
    Tap();
    EXPECT_EQ(log_, Log{}) << "what is disabled swallows it";
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
    Tap();
    EXPECT_EQ(log_, (Log{"press 110,120", "release 110,120"})) << "no action of what is gone";
    Do(&Input::Press, {110, 120});
    EXPECT_EQ(log_.size(), 2u);
}

TEST_F(TouchTest, GoingToTheBackgroundTakesTheFingerOffTheScreen) {
    AddButton({100, 100, 80, 80}, 7);
    form_->AddKeyEventListener(*this);
    Do(&Input::Press, {110, 120});
    PressKey();
    log_.clear();
    screen_.SetForeground(false);
    input_.LetGo();
    const auto finger = [this] {
        Do(&Input::Move, {111, 121});
        Do(&Input::Release, {111, 121});
        input_.KeyRelease(KeyCode::kCamera);
        loop_.Settle();
    };
    finger();
    Do(&Input::Press, {110, 120});
    PressKey();
    screen_.SetForeground(true);
    finger();
    EXPECT_EQ(log_, Log{}) << "held before, or pressed meanwhile";
    Tap();
    EXPECT_EQ(log_.back(), "action 7");
}

TEST_F(TouchTest, WhatWaitsWhileAPanelIsPresentedGoesWithTheBackground) {
    AddButton({100, 100, 80, 80}, 7);
    form_->AddKeyEventListener(*this);
    int steps = 0;
    for (int i = 0; i < 2; ++i) {
        loop_.Loop().Post(Base::EventClass::kSystem, [this, &steps, i] {
            if (i == 1) input_.LetGo();
            input_.Press({110, 120});
            input_.Release({110, 120});
            input_.KeyPress(KeyCode::kCamera);
            ++steps;
        });
    }
    loop_.Loop().RunHoldingApplication([&steps] { return steps == 2; });
    EXPECT_EQ(log_, Log{});
    loop_.Settle();
    EXPECT_EQ(log_, (Log{"press 110,120", "release 110,120", "action 7", "key 5"}))
        << "what came after it is heard, once";
}

TEST_F(TouchTest, AnotherFormHearsNothingOfWhatIsHeldOnThisOne) {
    AddButton({100, 100, 80, 80}, 7);
    form_->AddKeyEventListener(*this);
    Do(&Input::Press, {110, 120});
    input_.KeyPress(KeyCode::kCamera);
    Controls::Form* const other = AddForm();
    other->AddKeyEventListener(*this);
    log_.clear();
    ASSERT_EQ(frame_.SetCurrentForm(other), result::kSuccess);
    Do(&Input::Move, {111, 121});
    input_.KeyRelease(KeyCode::kCamera);
    ASSERT_EQ(frame_.SetCurrentForm(form_), result::kSuccess);
    Do(&Input::Release, {111, 121});
    EXPECT_EQ(log_, Log{}) << "nor this one when it is back";
}

TEST_F(TouchTest, WhatIsHiddenOrDisabledWhileItIsHeldIsReleasedWithoutAnAction) {
    Area* const panel = AddArea({0, 0, 800, 480});
    auto* const button = new Controls::Button;
    ASSERT_EQ(button->Construct({100, 100, 80, 80}), result::kSuccess);
    ASSERT_EQ(panel->AddControl(button), result::kSuccess);
    button->AddTouchEventListener(*this);
    button->AddActionEventListener(*this);
    const std::function<void(bool)> changes[] = {
        [&](bool hasIt) { (void)button->SetShowState(hasIt); },
        [&](bool hasIt) { (void)panel->SetShowState(hasIt); },
        [&](bool hasIt) { (void)button->SetEnabled(hasIt); }};
    for (const auto& change : changes) {
        log_.clear();
        Do(&Input::Press, {110, 120});
        change(false);
        Do(&Input::Release, {110, 120});
        EXPECT_EQ(log_, (Log{"press 110,120", "release 110,120"}));
        change(true);
    }
}

}  // namespace
}  // namespace Osp::Ui
