// A text, its caret and its selection, without a screen.
#pragma once

#include <string>
#include <utility>

#include "osp/ui/text/text_places.h"

namespace Osp::Ui {

/// Positions count UTF-16 units. The caret always stands where one may, and the text never grows
/// beyond its limit. Of control characters only line ends and tabs are kept.
class TextEditor {
  public:
    enum class Step { kCharacterBefore, kCharacterAfter, kWordBefore, kWordAfter, kStart, kEnd };

    /// Units, at least 0. A text that is longer is cut.
    void SetLimit(int limit);
    int GetLimit() const { return limit_; }

    /// Replaces everything; the caret goes to the end.
    void SetText(const std::u16string& text);
    const std::u16string& Text() const { return text_; }

    int Caret() const { return caret_; }
    /// Begin and end; both the caret when nothing is selected.
    std::pair<int, int> Selection() const;
    bool HasSelection() const { return anchor_ != caret_; }
    std::u16string SelectedText() const;

    /// Replaces the selection. What goes beyond the limit is cut, at a whole character.
    void Insert(const std::u16string& text);
    /// The selection; without one, what the step goes over.
    void Delete(Step step);

    /// `extend` keeps the other end of the selection where it is. Without it a step to a character
    /// beside a selection goes to the selection's end.
    void Move(Step step, bool extend);
    void MoveTo(int position, bool extend);
    /// Selects the word; without one there the caret goes to `position`.
    void SelectWord(int position);
    void SelectAll();

  private:
    int Target(Step step) const;
    void Replace(int begin, int end, const std::u16string& text);

    std::u16string text_;
    TextPlaces places_{text_};  // of text_
    int caret_ = 0;
    int anchor_ = 0;  // the end of the selection where the caret is not
    int limit_ = 2000;
};

}  // namespace Osp::Ui
