// Pango counts characters, and finds in them where a caret may stand and where words are; the rest
// of the system counts UTF-16 units. Both are walked side by side, so that nothing else has to know
// of the difference.
#include "osp/ui/text/text_places.h"

#include <algorithm>
#include <cassert>
#include <pango/pango.h>

#include <osp/base/string.h>

namespace Osp::Ui {

namespace {

struct Character {
    int units;
    int bytes;  // in UTF-8
};

Character CharacterAt(const std::u16string& text, std::size_t i) {
    const auto isBetween = [](char16_t unit, char16_t first, char16_t last) {
        return unit >= first && unit <= last;
    };
    const bool isPair = isBetween(text[i], 0xD800, 0xDBFF) && i + 1 < text.size() &&
                        isBetween(text[i + 1], 0xDC00, 0xDFFF);
    if (isPair) return {2, 4};
    return {1, text[i] < 0x80 ? 1 : text[i] < 0x800 ? 2 : 3};
}

}  // namespace

int ToUtf8Index(const std::u16string& text, int position) {
    assert(position >= 0 && position <= static_cast<int>(text.size()));
    int index = 0;
    for (int unit = 0; unit < position;) {
        const Character character = CharacterAt(text, static_cast<std::size_t>(unit));
        unit += character.units;
        index += character.bytes;
    }
    return index;
}

int FromUtf8Index(const std::u16string& text, int index) {
    int position = 0;
    while (index > 0 && position < static_cast<int>(text.size())) {
        const Character character = CharacterAt(text, static_cast<std::size_t>(position));
        position += character.units;
        index -= character.bytes;
    }
    return position;
}

TextPlaces::TextPlaces(const std::u16string& text) : places_(text.size() + 1) {
    std::vector<std::size_t> starts;  // of the characters, and the end
    for (std::size_t i = 0; i < text.size();) {
        starts.push_back(i);
        i += static_cast<std::size_t>(CharacterAt(text, i).units);
    }
    starts.push_back(text.size());
    std::vector<PangoLogAttr> attributes(starts.size());
    const std::string utf8 = Base::String(text).ToUtf8();
    pango_get_log_attrs(utf8.data(), static_cast<int>(utf8.size()), -1,
                        pango_language_get_default(), attributes.data(),
                        static_cast<int>(attributes.size()));
    for (std::size_t i = 0; i < starts.size(); ++i) {
        const PangoLogAttr& a = attributes[i];
        places_[starts[i]] = {a.is_cursor_position != 0, a.is_word_start != 0, a.is_word_end != 0};
    }
    places_.front().isCaret = places_.back().isCaret = true;
}

int TextPlaces::AtOrAfter(int position) const {
    position = std::clamp(position, 0, End());
    while (!At(position).isCaret) ++position;
    return position;
}

int TextPlaces::AtOrBefore(int position) const {
    position = std::clamp(position, 0, End());
    while (!At(position).isCaret) --position;
    return position;
}

int TextPlaces::After(int position) const {
    return AtOrAfter(position + 1);
}

int TextPlaces::Before(int position) const {
    return AtOrBefore(position - 1);
}

int TextPlaces::WordAfter(int position) const {
    do {
        position = After(position);
    } while (position < End() && !At(position).isWordStart);
    return position;
}

int TextPlaces::WordBefore(int position) const {
    do {
        position = Before(position);
    } while (position > 0 && !At(position).isWordStart);
    return position;
}

std::pair<int, int> TextPlaces::WordAt(int position) const {
    int begin = AtOrBefore(position);
    while (begin > 0 && !At(begin).isWordStart) begin = Before(begin);
    int end = begin;
    do {
        end = After(end);
    } while (end < End() && !At(end).isWordEnd);
    const bool isWord = At(begin).isWordStart && At(end).isWordEnd && end >= position;
    return isWord ? std::pair(begin, end) : std::pair(position, position);
}

}  // namespace Osp::Ui
