#include <memory>

#include <osp/ui/controls/popup.h>

#include "osp/graphics/access.h"
#include "osp/ui/access.h"
#include "osp/ui/input.h"
#include "osp/ui/screen.h"
#include "osp/ui/text/text_input.h"
#include "osp/ui/visible_controls.h"

namespace Osp::Ui::Controls {

namespace {

constexpr Graphics::Color kSheet{0xFA, 0xF5, 0xEA, 255};
constexpr Graphics::Color kInk{0x1C, 0x1A, 0x17, 255};
constexpr int kRadius = 20;
constexpr int kTitleSize = 34;  // the line of an em of 28
constexpr int kTitleY = 14;

/// The lowest that was added first, null when there is none.
EditArea* FirstEditArea(Popup& popup) {
    EditArea* first = nullptr;
    WalkShown(popup, [&](Control& control) {
        if (auto* const area = dynamic_cast<EditArea*>(&control)) first = area;
    });
    return first;
}

}  // namespace

Popup::~Popup() {
    (void)Popup::SetShowState(false);
}

result Popup::Construct(const Base::String& title, const Graphics::Dimension& size) {
    const auto [width, height] = Screen::kSize;
    if (size.width <= 0 || size.height <= 0 || size.width > width || size.height > height) {
        return result::kInvalidArgument;
    }
    title_ = title;
    SetBounds({(width - size.width) / 2, (height - size.height) / 2, size.width, size.height});
    return Control::SetShowState(false);
}

result Popup::SetShowState(bool shown) {
    if (GetBounds().IsEmpty() || shown == GetShowState()) return result::kSuccess;
    const result r = Control::SetShowState(shown);
    // What is held down belongs to what was there before.
    Input::Current().LetGo();
    if (!shown) {
        Screen::Current().ClosePopup(*this);
        TextInput::Current().Refresh();
        return r;
    }
    Screen::Current().OpenPopup(*this);
    if (EditArea* const area = FirstEditArea(*this)) TextInput::Current().Focus(*area, false);
    Place();
    return r;
}

bool Popup::IsVisible() const {
    return GetShowState() && Screen::Current().IsForeground();
}

void Popup::Place() {
    const auto [x, y, width, height] = GetBounds();
    const bool hangs = Screen::Current().IsKeyboardShown();
    const int place = hangs ? 0 : (Screen::kSize.height - height) / 2;
    if (place == y) return;
    (void)SetPosition(x, place);
    RequestRedraw();
}

result Popup::OnDraw() {
    const std::unique_ptr<Graphics::Canvas> canvas(GetCanvasN());
    if (!canvas) return result::kSuccess;
    const auto [x, y, width, height] = GetBounds();
    result r = canvas->Clear();
    // From the screen's edge a sheet hangs, without upper corners.
    const int above = y == 0 ? kRadius : 0;
    if (Succeeded(r)) {
        r = canvas->FillRoundRectangle(kSheet, {0, -above, width, height + above}, kRadius);
    }
    Graphics::Font font;
    if (Succeeded(r)) r = font.Construct(Graphics::kFontStyleBold, kTitleSize);
    if (Succeeded(r)) r = canvas->SetFont(font);
    if (Failed(r) || title_.IsEmpty()) return r;
    canvas->SetForegroundColor(kInk);
    return canvas->DrawText({(width - canvas->MeasureText(title_).width) / 2, kTitleY}, title_);
}

}  // namespace Osp::Ui::Controls
