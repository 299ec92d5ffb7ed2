// Places in UTF-16 text: where the caret may stand, and their counterparts in UTF-8.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace Osp::Ui {

/// Half of a surrogate pair counts as the character that stands for it in UTF-8. Positions count
/// code units; 0 <= position <= length.
int ToUtf8Index(const std::u16string& text, int position);
/// `index` is at the beginning of a character or at the end.
int FromUtf8Index(const std::u16string& text, int index);

/// What a person takes for one character is one step, however many units it has: surrogate pairs,
/// letters with combining marks, joined emoji.
class TextPlaces {
  public:
    explicit TextPlaces(const std::u16string& text);

    /// The nearest place that is not before, or not after, `position`.
    int AtOrAfter(int position) const;
    int AtOrBefore(int position) const;
    /// One step on; the same at the ends.
    int After(int position) const;
    int Before(int position) const;

    /// The beginning of the next word, the end where there is none; and back.
    int WordAfter(int position) const;
    int WordBefore(int position) const;
    /// Begin and end of the word at `position`, of which it may be the end; both `position` where
    /// there is none.
    std::pair<int, int> WordAt(int position) const;

  private:
    struct Place {
        bool isCaret = false;
        bool isWordStart = false;
        bool isWordEnd = false;
    };

    int End() const { return static_cast<int>(places_.size()) - 1; }
    const Place& At(int position) const { return places_[static_cast<std::size_t>(position)]; }

    std::vector<Place> places_;  // one for each unit, and one for the end
};

}  // namespace Osp::Ui
