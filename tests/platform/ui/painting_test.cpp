#include "tests/support/ui_fixture.h"

namespace Osp::Ui {
namespace {

using PaintingTest = UiTest;

class CountingPresenter : public Presenter {
  public:
    void FrameWanted() override { ++wanted; }
    void PresentNow() override { ++presented; }
    int wanted = 0;
    int presented = 0;
};

TEST_F(PaintingTest, ShowRaisesAShownControlAndNeverChangesTheShowState) {
    Area* const below = AddArea({0, 0, 100, 100}, kRed);
    Area* const above = AddArea({50, 0, 100, 100}, kGreen);
    EXPECT_EQ(PixelAt(60, 50), 0x00FF00u);
    (void)below->Show();
    EXPECT_EQ(PixelAt(60, 50), 0xFF0000u);
    EXPECT_EQ(PixelAt(120, 50), 0x00FF00u);

    (void)above->SetShowState(false);
    (void)above->Show();
    EXPECT_FALSE(above->GetShowState());
    EXPECT_EQ(PixelAt(120, 50), 0u);
    (void)above->SetShowState(true);
    EXPECT_EQ(PixelAt(60, 50), 0xFF0000u) << "a hidden control was not raised";
}

TEST_F(PaintingTest, APanelIsPresentedBeforeItsShowReturns) {
    CountingPresenter presenter;
    Area* const panel = AddArea({0, 0, 100, 100});
    auto* const button = AddButton({200, 0, 80, 80});
    screen_.SetPresenter(&presenter);
    (void)panel->Show();
    EXPECT_EQ(presenter.presented, 1);
    (void)button->Show();
    EXPECT_EQ(presenter.presented, 1) << "a button is not";
    screen_.SetPresenter(nullptr);
}

TEST_F(PaintingTest, DrawIsNowAndRequestRedrawIsBeforeTheNextFrame) {
    Area* const area = AddArea({0, 0, 100, 100}, kRed);
    EXPECT_EQ(PixelAt(50, 50), 0xFF0000u);
    const int drawn = area->DrawCount();
    area->SetColor(kBlue);
    area->RequestRedraw();
    area->RequestRedraw();
    EXPECT_EQ(area->DrawCount(), drawn);
    EXPECT_EQ(PixelAt(50, 50), 0x0000FFu);
    EXPECT_EQ(area->DrawCount(), drawn + 1);
    (void)area->Draw();
    EXPECT_EQ(area->DrawCount(), drawn + 2);
}

TEST_F(PaintingTest, AStillScreenAsksForNothing) {
    CountingPresenter presenter;
    Area* const area = AddArea({10, 10, 20, 20});
    (void)screen_.Compose();
    screen_.SetPresenter(&presenter);
    loop_.Pass(std::chrono::seconds(10));
    EXPECT_EQ(presenter.wanted, 0);
    EXPECT_FALSE(screen_.IsDamaged());
    area->RequestRedraw();
    area->RequestRedraw();
    EXPECT_EQ(presenter.wanted, 1) << "one frame for any number of changes";
    screen_.SetPresenter(nullptr);
}

TEST_F(PaintingTest, MovingAndHidingUncoverWhatLiesBelow) {
    AddArea({0, 0, 800, 480}, kBlue);
    Area* const area = AddArea({10, 10, 20, 20}, kRed);
    EXPECT_EQ(PixelAt(15, 15), 0xFF0000u);
    (void)area->SetPosition(100, 100);
    EXPECT_EQ(PixelAt(15, 15), 0x0000FFu);
    EXPECT_EQ(PixelAt(105, 105), 0xFF0000u);
    (void)area->SetShowState(false);
    EXPECT_EQ(PixelAt(105, 105), 0x0000FFu);
}

}  // namespace
}  // namespace Osp::Ui
