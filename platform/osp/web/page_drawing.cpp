#include "osp/web/page_drawing.h"

#include <sstream>
#include <vector>

namespace Osp::Web {

namespace {

using Base::String;

constexpr Graphics::Color kGround{0xED, 0xE4, 0xD2, 255};
constexpr Graphics::Color kSheet{0xFA, 0xF5, 0xEA, 255};
constexpr Graphics::Color kInk{0x1C, 0x1A, 0x17, 255};
constexpr Graphics::Color kText{0x40, 0x40, 0x40, 255};
constexpr Graphics::Color kBlank{255, 255, 255, 255};

constexpr const char* kTitle = "This page cannot be shown";
constexpr const char* kWhatToDo = "Close goes back.";

constexpr int kMargin = 24;
constexpr int kBelow = 68;  // the soft keys lie there
constexpr int kRadius = 20;
constexpr int kPadding = 32;
constexpr int kTitleSize = 34;
constexpr int kTextSize = 30;
constexpr int kLineGap = 4;

/// `text` in lines that are no wider than `width`; a word that is wider has a line of its own.
std::vector<String> Wrap(Graphics::Canvas& canvas, const std::string& text, int width) {
    std::vector<String> lines;
    std::string line;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        const std::string longer = line.empty() ? word : line + " " + word;
        const bool fits = canvas.MeasureText(String(std::string_view(longer))).width <= width;
        if (!fits && !line.empty()) lines.emplace_back(std::string_view(line));
        line = fits ? longer : word;
    }
    lines.emplace_back(std::string_view(line));
    return lines;
}

result SetFont(Graphics::Canvas& canvas, int style, int size) {
    Graphics::Font font;
    const result r = font.Construct(style, size);
    return Failed(r) ? r : canvas.SetFont(font);
}

/// Returns the top of what comes below.
int DrawLines(Graphics::Canvas& canvas, const std::string& text, Graphics::Point topLeft,
              int lineHeight) {
    const int width = canvas.GetBounds().width - 2 * topLeft.x;
    for (const String& line : Wrap(canvas, text, width)) {
        (void)canvas.DrawText(topLeft, line);
        topLeft.y += lineHeight;
    }
    return topLeft.y;
}

}  // namespace

result DrawWhyNot(Graphics::Canvas& canvas, const std::string& whyNot) {
    const Graphics::Rectangle all = canvas.GetBounds();
    const Graphics::Rectangle sheet{kMargin, kMargin, all.width - 2 * kMargin,
                                    all.height - kMargin - kBelow};
    result r = canvas.FillRectangle(kGround, all);
    if (Failed(r) || sheet.IsEmpty()) return r;
    r = canvas.FillRoundRectangle(kSheet, sheet, kRadius);
    if (Succeeded(r)) r = SetFont(canvas, Graphics::kFontStyleBold, kTitleSize);
    if (Failed(r)) return r;
    canvas.SetForegroundColor(kInk);
    const int x = sheet.x + kPadding;
    int y = DrawLines(canvas, kTitle, {x, sheet.y + kPadding}, kTitleSize) + kPadding / 2;
    r = SetFont(canvas, Graphics::kFontStylePlain, kTextSize);
    if (Failed(r)) return r;
    canvas.SetForegroundColor(kText);
    y = DrawLines(canvas, whyNot, {x, y}, kTextSize + kLineGap);
    DrawLines(canvas, kWhatToDo, {x, y}, kTextSize + kLineGap);
    return r;
}

String TellWhyNot(const std::string& whyNot) {
    return String(std::string_view(std::string(kTitle) + ". " + whyNot + " " + kWhatToDo));
}

result DrawPicture(Graphics::Canvas& canvas, Graphics::Surface& picture,
                   const Graphics::Surface* page) {
    const result r = canvas.FillRectangle(kBlank, canvas.GetBounds());
    if (Failed(r) || page == nullptr) return r;
    const Graphics::CairoPointer context(cairo_create(picture.Cairo()));
    cairo_set_source_surface(context.get(), page->Cairo(), 0, 0);
    cairo_paint(context.get());
    return r;
}

}  // namespace Osp::Web
