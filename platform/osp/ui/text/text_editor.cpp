// Every change goes through Replace, which cuts what is too much and finds the places of the new
// text before the caret is set: a mark that is typed after a letter, or deleted text between a
// letter and a mark, can make one character of what were two, and the caret must not stand inside.
#include "osp/ui/text/text_editor.h"

#include <algorithm>
#include <cassert>

namespace Osp::Ui {

namespace {

std::u16string WithoutControls(const std::u16string& text) {
    std::u16string kept;
    std::ranges::copy_if(text, std::back_inserter(kept), [](char16_t unit) {
        return unit == u'\n' || unit == u'\t' || (unit >= 0x20 && unit != 0x7F);
    });
    return kept;
}

/// The beginning of `text`, at most `length` units, cut between two characters.
std::u16string CutTo(const std::u16string& text, int length) {
    if (static_cast<int>(text.size()) <= length) return text;
    return text.substr(0, static_cast<std::size_t>(TextPlaces(text).AtOrBefore(length)));
}

}  // namespace

void TextEditor::SetLimit(int limit) {
    assert(limit >= 0);
    limit_ = limit;
    if (static_cast<int>(text_.size()) > limit_) SetText(text_);
}

void TextEditor::SetText(const std::u16string& text) {
    Replace(0, static_cast<int>(text_.size()), text);
}

std::pair<int, int> TextEditor::Selection() const {
    return std::minmax({anchor_, caret_});
}

std::u16string TextEditor::SelectedText() const {
    const auto [begin, end] = Selection();
    return text_.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin));
}

void TextEditor::Insert(const std::u16string& text) {
    const auto [begin, end] = Selection();
    Replace(begin, end, text);
}

void TextEditor::Delete(Step step) {
    if (!HasSelection()) anchor_ = Target(step);
    Insert({});
}

void TextEditor::Move(Step step, bool extend) {
    const auto [begin, end] = Selection();
    const bool leaves = HasSelection() && !extend;
    if (leaves && step == Step::kCharacterBefore) return MoveTo(begin, false);
    if (leaves && step == Step::kCharacterAfter) return MoveTo(end, false);
    MoveTo(Target(step), extend);
}

void TextEditor::MoveTo(int position, bool extend) {
    caret_ = places_.AtOrBefore(position);
    if (!extend) anchor_ = caret_;
}

void TextEditor::SelectWord(int position) {
    const auto [begin, end] = places_.WordAt(places_.AtOrBefore(position));
    anchor_ = begin;
    caret_ = end;
}

void TextEditor::SelectAll() {
    anchor_ = 0;
    caret_ = static_cast<int>(text_.size());
}

int TextEditor::Target(Step step) const {
    switch (step) {
        case Step::kCharacterBefore:
            return places_.Before(caret_);
        case Step::kCharacterAfter:
            return places_.After(caret_);
        case Step::kWordBefore:
            return places_.WordBefore(caret_);
        case Step::kWordAfter:
            return places_.WordAfter(caret_);
        case Step::kStart:
            return 0;
        case Step::kEnd:
            return static_cast<int>(text_.size());
    }
    return caret_;
}

void TextEditor::Replace(int begin, int end, const std::u16string& text) {
    assert(begin >= 0 && begin <= end && end <= static_cast<int>(text_.size()));
    const int room = limit_ - static_cast<int>(text_.size()) + (end - begin);
    const std::u16string added = CutTo(WithoutControls(text), std::max(room, 0));
    text_.replace(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin), added);
    places_ = TextPlaces(text_);
    caret_ = anchor_ = places_.AtOrAfter(begin + static_cast<int>(added.size()));
}

}  // namespace Osp::Ui
