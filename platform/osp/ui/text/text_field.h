// What an edit area shows: a text as it is edited, through a window that scrolls.
#pragma once

#include <cairo.h>
#include <memory>
#include <string>

#include <osp/graphics/dimension.h>
#include <osp/graphics/font.h>
#include <osp/graphics/point.h>
#include <osp/graphics/rectangle.h>

#include "osp/ui/text/caret_move.h"
#include "osp/ui/text/text_editor.h"
#include "osp/ui/text/text_layout.h"

namespace Osp::Ui {

/// Points and rectangles are pixels of the area. Whatever changes the text or moves the caret
/// brings the caret into view; scrolling does not.
class TextField {
  public:
    /// Both sides are larger than the margins.
    explicit TextField(Graphics::Dimension size);

    const TextEditor& Editor() const { return editor_; }
    void SetText(const std::u16string& text);
    void SetLimit(int limit);
    void Insert(const std::u16string& text);
    /// The selection; without one, what `move` goes over.
    void Delete(TextEditor::Step step);
    void Move(CaretMove move, bool extend);
    void MoveTo(Graphics::Point point);
    void SelectWord(Graphics::Point point);
    void SelectAll();

    /// Text that is still being composed, shown at the caret as if it were there, and the caret's
    /// place in it. Every change of the text ends it.
    void SetComposition(const std::u16string& text, int caret);

    /// Down when positive, as far as there is text.
    void ScrollBy(int pixels);
    Graphics::Rectangle CaretBounds() const;

    /// The whole area; `isFocused` with the caret.
    void Paint(cairo_t* context, bool isFocused) const;

  private:
    template <class Change>
    void Edit(Change change);
    void MoveByLine(int direction, bool extend);
    void Lay();
    void ShowCaret();
    int ShownCaret() const;
    Graphics::Point ToText(Graphics::Point point) const;
    int ViewHeight() const;
    int MostScroll() const;
    void PaintText(cairo_t* context, bool isFocused) const;
    void PaintScrollMark(cairo_t* context) const;

    Graphics::Dimension size_;
    Graphics::Font font_;
    TextEditor editor_;
    std::u16string composition_;
    int compositionCaret_ = 0;
    std::unique_ptr<TextLayout> layout_;  // of text and composition
    int scroll_ = 0;                      // pixels of the text above the view
    int goalX_ = -1;                      // of moves from line to line; -1 where the caret is
};

}  // namespace Osp::Ui
