// The layer covers the screen and takes every touch, but only its button does anything: a tap
// beside the sheet must not answer by accident. It is made of ordinary controls and drawn by the
// compositor like a form; what makes it modal is that Screen routes the input to it and runs the
// loop.
#include "osp/ui/modal_layer.h"

#include <memory>
#include <utility>
#include <vector>

#include <osp/ui/controls/button.h>
#include <osp/ui/controls/label.h>

#include "osp/graphics/access.h"
#include "osp/graphics/surface.h"
#include "osp/ui/screen.h"

namespace Osp::Ui {

namespace {

constexpr Graphics::Color kScrim{0, 0, 0, 153};
constexpr Graphics::Color kSheet{0xFA, 0xF5, 0xEA, 255};
constexpr Graphics::Color kInk{0x1C, 0x1A, 0x17, 255};
constexpr Graphics::Color kDarkButton{0x2E, 0x2A, 0x26, 255};
constexpr Graphics::Color kDarkButtonPressed{0x85, 0x7A, 0x69, 255};

constexpr int kSheetWidth = 480;
constexpr int kPadding = 32;
constexpr int kTitleSize = 34;
constexpr int kTextSize = 30;
constexpr int kLineGap = 4;
constexpr Graphics::Dimension kButtonSize{200, 76};
constexpr int kSheetRadius = 20;
constexpr int kButtonRadius = 14;

std::vector<Base::String> Lines(const Base::String& text) {
    std::vector<Base::String> lines;
    std::u16string line;
    for (const char16_t unit : text.Units()) {
        if (unit == u'\r') continue;
        if (unit != u'\n') {
            line += unit;
            continue;
        }
        lines.emplace_back(std::exchange(line, {}));
    }
    lines.emplace_back(line);
    return lines;
}

Graphics::Font MakeFont(int style, int size) {
    Graphics::Font font;
    (void)font.Construct(style, size);
    return font;
}

Graphics::Dimension Measure(const Base::String& text, const Graphics::Font& font) {
    Graphics::Canvas canvas = Graphics::Access::MakeCanvas(std::make_shared<Graphics::Surface>(
        Graphics::Dimension{1, 1}, Graphics::Surface::Kind::kWithAlpha));
    (void)canvas.SetFont(font);
    return canvas.MeasureText(text);
}

class OkButton : public Controls::Button {
  public:
    result OnDraw() override {
        const std::unique_ptr<Graphics::Canvas> canvas(GetCanvasN());
        const auto [width, height] = GetBounds().Size();
        result r = canvas->Clear();
        if (Failed(r)) return r;
        r = canvas->FillRoundRectangle(IsPressed() ? kDarkButtonPressed : kDarkButton,
                                       {0, 0, width, height}, kButtonRadius);
        return Failed(r) ? r : DrawText(*canvas);
    }
};

}  // namespace

ModalLayer::ModalLayer(const Base::String& title, const Base::String& text,
                       Controls::MessageBoxStyle style) {
    SetBounds({0, 0, Screen::kSize.width, Screen::kSize.height});
    const std::vector<Base::String> lines = Lines(text);
    const bool hasButton = style == Controls::MessageBoxStyle::kOk;
    const int titleHeight = title.IsEmpty() ? 0 : kTitleSize + kPadding / 2;
    const int textHeight = static_cast<int>(lines.size()) * (kTextSize + kLineGap) - kLineGap;
    const int buttonHeight = hasButton ? kButtonSize.height + kPadding : 0;
    const int height = 2 * kPadding + titleHeight + textHeight + buttonHeight;
    sheet_ = {(Screen::kSize.width - kSheetWidth) / 2, (Screen::kSize.height - height) / 2,
              kSheetWidth, height};

    int y = sheet_.y + kPadding;
    if (!title.IsEmpty()) AddLine(title, Graphics::kFontStyleBold, kTitleSize, y);
    y += titleHeight;
    for (const Base::String& line : lines) {
        AddLine(line, Graphics::kFontStylePlain, kTextSize, y);
        y += kTextSize + kLineGap;
    }
    if (hasButton) AddButton();
}

void ModalLayer::AddLine(const Base::String& text, int fontStyle, int size, int y) {
    if (text.IsEmpty()) return;
    const Graphics::Font font = MakeFont(fontStyle, size);
    const Graphics::Dimension area = Measure(text, font);
    auto label = std::make_unique<Controls::Label>();
    (void)label->Construct({(Screen::kSize.width - area.width) / 2, y, area.width, area.height},
                           text);
    (void)label->SetTextFont(font);
    label->SetTextColor(kInk);
    if (Succeeded(AddControl(label.get()))) (void)label.release();
}

void ModalLayer::AddButton() {
    auto button = std::make_unique<OkButton>();
    (void)button->Construct({(Screen::kSize.width - kButtonSize.width) / 2,
                             sheet_.y + sheet_.height - kPadding - kButtonSize.height,
                             kButtonSize.width, kButtonSize.height});
    button->SetText("OK");
    (void)button->SetTextFont(MakeFont(Graphics::kFontStyleBold, kTextSize));
    button->SetTextColor(kSheet);
    button->AddActionEventListener(*this);
    if (Succeeded(AddControl(button.get()))) (void)button.release();
}

result ModalLayer::OnDraw() {
    const std::unique_ptr<Graphics::Canvas> canvas(GetCanvasN());
    const result r = canvas->FillRectangle(kScrim, GetBounds());
    return Failed(r) ? r : canvas->FillRoundRectangle(kSheet, sheet_, kSheetRadius);
}

void ModalLayer::OnActionPerformed(const Control&, int) {
    Answer();
}

}  // namespace Osp::Ui
