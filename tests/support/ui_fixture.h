// A screen with one current form, run by the test itself.
#pragma once

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <osp/ui/controls/button.h>
#include <osp/ui/controls/form.h>
#include <osp/ui/controls/frame.h>
#include <osp/ui/controls/panel.h>

#include "osp/ui/access.h"
#include "osp/ui/input.h"
#include "osp/ui/screen.h"
#include "osp/ui/text/text_input.h"
#include "tests/support/test_loop.h"

namespace Osp::Ui {

/// Draws itself as a plain area.
class Area : public Controls::Panel {
  public:
    Area(const Graphics::Rectangle& bounds, Graphics::Color color) : color_(color) {
        EXPECT_EQ(Construct(bounds), result::kSuccess);
    }
    result OnDraw() override {
        ++drawCount_;
        const std::unique_ptr<Graphics::Canvas> canvas(GetCanvasN());
        (void)canvas->FillRectangle(color_, {0, 0, GetBounds().width, GetBounds().height});
        return result::kSuccess;
    }
    void SetColor(Graphics::Color color) { color_ = color; }
    int DrawCount() const { return drawCount_; }

  private:
    Graphics::Color color_;
    int drawCount_ = 0;
};

constexpr Graphics::Color kRed{255, 0, 0, 255};
constexpr Graphics::Color kGreen{0, 255, 0, 255};
constexpr Graphics::Color kBlue{0, 0, 255, 255};

class UiTest : public testing::Test {
  protected:
    UiTest() {
        form_ = new Controls::Form;
        EXPECT_EQ(form_->Construct(0), result::kSuccess);
        EXPECT_EQ(frame_.AddControl(form_), result::kSuccess);
        screen_.SetFrame(&frame_);
        screen_.SetForeground(true);
        EXPECT_EQ(frame_.SetCurrentForm(form_), result::kSuccess);
        (void)screen_.Compose();
    }
    ~UiTest() override { screen_.SetFrame(nullptr); }

    /// Adds `control`, which the form takes over, and returns it.
    template <class T>
    T* Add(T* control) {
        EXPECT_EQ(form_->AddControl(control), result::kSuccess);
        return control;
    }
    Area* AddArea(const Graphics::Rectangle& bounds, Graphics::Color color = kRed) {
        return Add(new Area(bounds, color));
    }

    Controls::Button* AddButton(const Graphics::Rectangle& bounds) {
        auto* const button = Add(new Controls::Button);
        EXPECT_EQ(button->Construct(bounds), result::kSuccess);
        return button;
    }

    /// 0xRRGGBB of the composed screen.
    std::uint32_t PixelAt(int x, int y) {
        const Graphics::Surface& picture = screen_.Compose();
        const auto* row = picture.Data() + std::ptrdiff_t{picture.StrideBytes()} * y;
        return reinterpret_cast<const std::uint32_t*>(row)[x] & 0xFFFFFF;
    }

    std::vector<std::string> log_;  // outlives the forms, which write to it
    Testing::TestLoop loop_;
    Screen screen_;
    Screen::Installed installedScreen_{screen_};
    Input input_;
    Input::Installed installedInput_{input_};
    TextInput textInput_{""};
    TextInput::Installed installedTextInput_{textInput_};
    Controls::Frame frame_ = Access::MakeFrame();
    Controls::Form* form_;  // the frame's
};

/// Notes what buttons and keys do.
class NotingUiTest : public UiTest, public IActionEventListener, public IKeyEventListener {
  protected:
    void Tap(Graphics::Point position) {
        input_.Press(position);
        input_.Release(position);
        loop_.Settle();
    }
    void OnActionPerformed(const Control&, int id) override {
        log_.push_back("action " + std::to_string(id));
    }
    void OnKeyPressed(const Control&, KeyCode code) override {
        log_.push_back("key " + std::to_string(static_cast<int>(code)));
    }
    void OnKeyReleased(const Control&, KeyCode) override { log_.push_back("key up"); }
    void OnKeyLongPressed(const Control&, KeyCode) override {}
};

}  // namespace Osp::Ui
