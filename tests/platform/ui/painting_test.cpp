#include <algorithm>
#include <memory>
#include <utility>

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

/// Of the pixels of one colour in a row of the screen, the first and the last.
std::pair<int, int> Extent(const std::vector<std::uint32_t>& row, std::uint32_t color) {
    const auto first = std::ranges::find(row, color);
    const auto last = std::find(row.rbegin(), row.rend(), color);
    return {int(first - row.begin()), int(row.rend() - last) - 1};
}

TEST_F(PaintingTest, AButtonShowsItsTextInItsMiddleAboveItsPicture) {
    Base::ByteBuffer blue;
    ASSERT_EQ(blue.Construct(200 * 60 * 4), result::kSuccess);
    for (int i = 0; i < 200 * 60 * 4; ++i) blue.GetPointer()[i] = i % 4 < 2 ? 0 : 255;
    Graphics::Bitmap bitmap;
    ASSERT_EQ(bitmap.Construct(blue, {200, 60}, Graphics::BitmapPixelFormat::kArgb8888),
              result::kSuccess);
    auto* const button = AddButton({100, 100, 200, 60});
    button->SetNormalBitmap(bitmap);
    button->SetText("HHHH");
    button->SetTextColor(kRed);
    std::vector<std::uint32_t> row;
    for (int x = 0; x < 400; ++x) row.push_back(PixelAt(x, 130));
    const auto [left, right] = Extent(row, 0xFF0000);
    EXPECT_NEAR(left - 100, 300 - 1 - right, 2);
    EXPECT_GT(right - left, 50);
    EXPECT_EQ(row[100], 0x0000FFu);
    Graphics::Font small;
    ASSERT_EQ(small.Construct(Graphics::kFontStylePlain, 12), result::kSuccess);
    EXPECT_EQ(button->SetTextFont(small), result::kSuccess);
    EXPECT_EQ(PixelAt(left + 1, 130), 0x0000FFu) << "smaller now";
}

TEST_F(PaintingTest, AScaledCopyLooksLikeWhatACanvasScales) {
    Base::ByteBuffer noise;
    ASSERT_EQ(noise.Construct(40 * 30 * 4), result::kSuccess);
    for (int i = 0; i < 40 * 30 * 4; ++i) noise.GetPointer()[i] = std::uint8_t(i * i % 251);
    Graphics::Bitmap original;
    Graphics::Bitmap copy;
    ASSERT_EQ(original.Construct(noise, {40, 30}, Graphics::BitmapPixelFormat::kArgb8888),
              result::kSuccess);
    EXPECT_EQ(copy.Construct(original, {20, 0}), result::kInvalidArgument);
    ASSERT_EQ(copy.Construct(original, {25, 20}), result::kSuccess);
    Area* const area = AddArea({0, 0, 100, 50}, kBlue);
    (void)screen_.Compose();
    const std::unique_ptr<Graphics::Canvas> canvas(area->GetCanvasN());
    (void)canvas->DrawBitmap(Graphics::Rectangle{0, 0, 25, 20}, original);
    (void)canvas->DrawBitmap(Graphics::Point{50, 0}, copy);
    (void)area->Show();
    EXPECT_NE(PixelAt(10, 10), 0x0000FFu);
    for (int i = 0; i < 25 * 20 * 3; ++i) {
        const int x = i / 3 % 25;
        const int y = i / 75;
        const auto channel = [&](int left) { return int(PixelAt(left, y) >> 8 * (i % 3) & 255); };
        EXPECT_NEAR(channel(x), channel(50 + x), 2) << x << ", " << y;
    }
}

}  // namespace
}  // namespace Osp::Ui
