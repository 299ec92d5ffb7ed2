// Buttons used by keyboard.
#include <functional>

#include "tests/support/ui_fixture.h"

namespace Osp::Ui {
namespace {

using Log = std::vector<std::string>;

class FocusTest : public NotingUiTest {
  protected:
    FocusTest() { form_->AddKeyEventListener(*this); }

    Controls::Button* AddNoted(const Graphics::Rectangle& bounds, int id) {
        auto* const button = AddButton(bounds);
        button->SetActionId(id);
        button->AddActionEventListener(*this);
        return button;
    }
    void Tab(bool backward = false) {
        input_.FocusNext(backward);
        loop_.Settle();
    }
    void Enter() {
        input_.Confirm();
        input_.KeyRelease(KeyCode::kCamera);
        loop_.Settle();
    }
    /// The action of the focused button; 0 without one.
    int Focused() {
        const auto* const button = dynamic_cast<Controls::Button*>(screen_.GetFocus());
        return button == nullptr ? 0 : button->GetActionId();
    }
    /// Whether the ring is drawn on the button at that corner.
    bool HasRing(int x, int y) { return PixelAt(x + 40, y + 3) == 0xFFB938; }
};

TEST_F(FocusTest, GoesRoundTheButtonsThatCouldBeTouched) {
    AddNoted({0, 200, 80, 80}, 4);
    AddNoted({300, 100, 80, 80}, 3);
    AddNoted({0, 100, 80, 80}, 2);
    AddNoted({500, 0, 80, 80}, 1);
    (void)AddNoted({600, 0, 80, 80}, 7)->SetEnabled(false);
    (void)AddNoted({700, 0, 80, 80}, 8)->SetShowState(false);
    AddNoted({100, 200, 40, 40}, 9);
    AddButton({90, 190, 60, 60})->SetActionId(5);  // covers the one before
    std::vector<int> order;
    for (int i = 0; i < 6; ++i) {
        Tab();
        order.push_back(Focused());
    }
    EXPECT_EQ(order, (std::vector{1, 2, 3, 5, 4, 1}));
    Tab(true);
    EXPECT_EQ(Focused(), 4);
    EXPECT_TRUE(HasRing(0, 200));
    EXPECT_FALSE(HasRing(500, 0)) << "there is one ring";
}

TEST_F(FocusTest, LetsItsButtonActAndIsTheCameraKeyWithoutOne) {
    auto* const button = AddNoted({0, 0, 80, 80}, 1);
    Enter();
    EXPECT_EQ(log_, (Log{"key 5", "key up"}));
    Tab();
    log_.clear();
    Enter();
    EXPECT_EQ(log_, Log{"action 1"});
    (void)button->SetEnabled(false);
    Enter();
    EXPECT_EQ(log_, Log{"action 1"}) << "neither the button nor the camera";
    (void)form_->RemoveControl(*button);
    loop_.Settle();
    Enter();
    EXPECT_EQ(log_, (Log{"action 1", "key 5", "key up"}));
}

TEST_F(FocusTest, GoesWithTheNextTouchTheBackgroundAndTheForm) {
    AddNoted({0, 0, 80, 80}, 1);
    auto* const other = new Controls::Form;
    ASSERT_EQ(other->Construct(0), result::kSuccess);
    ASSERT_EQ(frame_.AddControl(other), result::kSuccess);
    const std::function<void()> ends[] = {[this] {
                                              input_.Press({400, 400});
                                          },
                                          [this] { input_.LetGo(); },
                                          [&] { (void)frame_.SetCurrentForm(other); }};
    for (const auto& end : ends) {
        Tab();
        EXPECT_TRUE(HasRing(0, 0));
        end();
        EXPECT_EQ(Focused(), 0);
        EXPECT_FALSE(HasRing(0, 0));
        input_.LetGo();
    }
    Tab();
    EXPECT_EQ(Focused(), 0) << "a form without buttons";
    screen_.SetForeground(false);
    (void)frame_.SetCurrentForm(form_);
    Tab();
    EXPECT_EQ(Focused(), 0) << "no keys in the background";
}

}  // namespace
}  // namespace Osp::Ui
