// The layout is made anew with every change, which for a message is cheaper than any bookkeeping,
// and is of what is seen: the text with the composition in it. Positions of the editor are those of
// the layout only while nothing is composed; every finger and every key but the composition's own
// ends it first.
#include "osp/ui/text/text_field.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <numbers>

#include <osp/graphics/color.h>

namespace Osp::Ui {

namespace {

using Graphics::Color;

constexpr int kMarginX = 18;
constexpr int kMarginY = 13;
constexpr int kTextSize = 32;  // the line of an em of 26
constexpr int kCaretWidth = 3;
constexpr double kRadius = 12;
constexpr double kMarkWidth = 4;

constexpr Color kPaper{255, 255, 255, 255};
constexpr Color kInk{0x1C, 0x1A, 0x17, 255};
constexpr Color kTrack{0x85, 0x7A, 0x69, 255};
constexpr Color kLine{0xCD, 0xBF, 0xA6, 255};
constexpr Color kSignal{0xCF, 0x3A, 0x20, 255};
constexpr Color kAmber{0xFF, 0xB9, 0x38, 255};

void SetSource(cairo_t* context, const Color& color) {
    cairo_set_source_rgb(context, color.red / 255.0, color.green / 255.0, color.blue / 255.0);
}

void RoundRectangle(cairo_t* context, double width, double height, double inset) {
    constexpr double kQuarter = std::numbers::pi / 2;
    const double near = inset + kRadius;
    cairo_new_path(context);
    cairo_arc(context, width - near, near, kRadius, -kQuarter, 0);
    cairo_arc(context, width - near, height - near, kRadius, 0, kQuarter);
    cairo_arc(context, near, height - near, kRadius, kQuarter, 2 * kQuarter);
    cairo_arc(context, near, near, kRadius, 2 * kQuarter, 3 * kQuarter);
    cairo_close_path(context);
}

}  // namespace

TextField::TextField(Graphics::Dimension size) : size_(size) {
    assert(size.width > 2 * kMarginX && size.height > 2 * kMarginY);
    (void)font_.Construct(Graphics::kFontStylePlain, kTextSize);
    Lay();
}

template <class Change>
void TextField::Edit(Change change) {
    composition_.clear();
    change();
    goalX_ = -1;
    Lay();
    ShowCaret();
}

void TextField::SetText(const std::u16string& text) {
    Edit([&] { editor_.SetText(text); });
}

void TextField::SetLimit(int limit) {
    Edit([&] { editor_.SetLimit(limit); });
}

void TextField::Insert(const std::u16string& text) {
    Edit([&] { editor_.Insert(text); });
}

void TextField::Delete(TextEditor::Step step) {
    Edit([&] { editor_.Delete(step); });
}

void TextField::SelectAll() {
    Edit([&] { editor_.SelectAll(); });
}

void TextField::MoveTo(Graphics::Point point) {
    Edit([&] {
        Lay();
        editor_.MoveTo(layout_->PositionAt(ToText(point)), false);
    });
}

void TextField::SelectWord(Graphics::Point point) {
    Edit([&] {
        Lay();
        editor_.SelectWord(layout_->PositionAt(ToText(point)));
    });
}

void TextField::Move(CaretMove move, bool extend) {
    using Step = TextEditor::Step;
    const auto step = [&](Step s) { Edit([&] { editor_.Move(s, extend); }); };
    const auto to = [&](int position) { Edit([&] { editor_.MoveTo(position, extend); }); };
    switch (move) {
        case CaretMove::kCharacterBefore:
            return step(Step::kCharacterBefore);
        case CaretMove::kCharacterAfter:
            return step(Step::kCharacterAfter);
        case CaretMove::kWordBefore:
            return step(Step::kWordBefore);
        case CaretMove::kWordAfter:
            return step(Step::kWordAfter);
        case CaretMove::kTextStart:
            return step(Step::kStart);
        case CaretMove::kTextEnd:
            return step(Step::kEnd);
        case CaretMove::kLineStart:
            return to(layout_->LineStart(editor_.Caret()));
        case CaretMove::kLineEnd:
            return to(layout_->LineEnd(editor_.Caret()));
        case CaretMove::kLineAbove:
            return MoveByLine(-1, extend);
        case CaretMove::kLineBelow:
            return MoveByLine(1, extend);
    }
}

// Over a short line the caret keeps to the column from which it came.
void TextField::MoveByLine(int direction, bool extend) {
    const Graphics::Rectangle caret = layout_->CaretAt(editor_.Caret());
    const int goal = goalX_ < 0 ? caret.x : goalX_;
    const int y = direction < 0 ? caret.y - caret.height / 2 : caret.y + caret.height * 3 / 2;
    const int end = static_cast<int>(editor_.Text().size());
    const int position = y < 0 ? 0 : y > layout_->Height() ? end : layout_->PositionAt({goal, y});
    Edit([&] { editor_.MoveTo(position, extend); });
    goalX_ = goal;
}

void TextField::SetComposition(const std::u16string& text, int caret) {
    assert(caret >= 0 && caret <= static_cast<int>(text.size()));
    if (!text.empty() && editor_.HasSelection()) editor_.Insert({});
    composition_ = text;
    compositionCaret_ = caret;
    Lay();
    ShowCaret();
}

void TextField::ScrollBy(int pixels) {
    scroll_ = std::clamp(scroll_ + pixels, 0, MostScroll());
}

Graphics::Rectangle TextField::CaretBounds() const {
    Graphics::Rectangle caret = layout_->CaretAt(ShownCaret());
    caret.width = kCaretWidth;
    return caret.MovedBy(kMarginX, kMarginY - scroll_);
}

void TextField::Lay() {
    std::u16string shown = editor_.Text();
    const int caret = editor_.Caret();
    shown.insert(static_cast<std::size_t>(caret), composition_);
    const int end = caret + static_cast<int>(composition_.size());
    layout_ = std::make_unique<TextLayout>(std::move(shown), font_, size_.width - 2 * kMarginX,
                                           TextLayout::Range{caret, end});
}

void TextField::ShowCaret() {
    const Graphics::Rectangle caret = layout_->CaretAt(ShownCaret());
    scroll_ = std::min(std::max(scroll_, caret.y + caret.height - ViewHeight()), caret.y);
    ScrollBy(0);
}

int TextField::ShownCaret() const {
    return editor_.Caret() + (composition_.empty() ? 0 : compositionCaret_);
}

Graphics::Point TextField::ToText(Graphics::Point point) const {
    return {point.x - kMarginX, point.y - kMarginY + scroll_};
}

int TextField::ViewHeight() const {
    return size_.height - 2 * kMarginY;
}

int TextField::MostScroll() const {
    return std::max(layout_->Height() - ViewHeight(), 0);
}

void TextField::Paint(cairo_t* context, bool isFocused) const {
    const double line = isFocused ? 2.5 : 2;
    RoundRectangle(context, size_.width, size_.height, line / 2);
    SetSource(context, kPaper);
    cairo_fill_preserve(context);
    SetSource(context, isFocused ? kInk : kTrack);
    cairo_set_line_width(context, line);
    cairo_stroke(context);
    PaintText(context, isFocused);
    PaintScrollMark(context);
}

void TextField::PaintText(cairo_t* context, bool isFocused) const {
    cairo_save(context);
    // Accents and the caret may stand out a little; half a line further on the text is cut.
    cairo_rectangle(context, 3, kMarginY / 2.0, size_.width - 6, size_.height - kMarginY);
    cairo_clip(context);
    cairo_translate(context, kMarginX, kMarginY - scroll_);
    if (composition_.empty()) {
        SetSource(context, kAmber);
        layout_->FillBehind(context, editor_.Selection());
    }
    SetSource(context, kInk);
    layout_->Paint(context);
    if (isFocused && !editor_.HasSelection()) {
        const Graphics::Rectangle caret = layout_->CaretAt(ShownCaret());
        SetSource(context, kSignal);
        cairo_rectangle(context, caret.x, caret.y, kCaretWidth, caret.height);
        cairo_fill(context);
    }
    cairo_restore(context);
}

void TextField::PaintScrollMark(cairo_t* context) const {
    const int most = MostScroll();
    if (most == 0) return;
    const double room = ViewHeight();
    const double length = room * room / (room + most);
    SetSource(context, kLine);
    cairo_set_line_width(context, kMarkWidth);
    cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
    const double top = kMarginY + (room - length) * scroll_ / most;
    cairo_move_to(context, size_.width - 9, top);
    cairo_line_to(context, size_.width - 9, top + length);
    cairo_stroke(context);
}

}  // namespace Osp::Ui
