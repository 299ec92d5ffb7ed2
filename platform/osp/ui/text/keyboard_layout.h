// What is on the keys of the screen's keyboard, and where they are.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include <osp/graphics/dimension.h>
#include <osp/graphics/rectangle.h>

namespace Osp::Ui {

enum class KeyKind { kText, kShift, kSymbols, kPage, kLetters, kSpace, kDelete, kHide, kEnter };
enum class KeyPage { kLetters, kDigits, kSymbols };
inline constexpr KeyPage kKeyPages[] = {KeyPage::kLetters, KeyPage::kDigits, KeyPage::kSymbols};

/// Three rows of at most 10, 10 and 7 characters.
struct KeyRows {
    std::array<std::u16string_view, 3> rows;
};

/// Of a language, as "de", or "" for none that is known.
struct Letters {
    std::string_view language;
    KeyRows keys;
    /// Accented letters that are used so often that they come before all others.
    std::u16string_view own;
};

struct KeyPlace {
    KeyKind kind;
    std::u16string text;         // what it types, of a kText or kSpace
    Graphics::Rectangle cell;    // where it is touched, on the keyboard
    Graphics::Rectangle keycap;  // where it is seen, in the cell
};

inline constexpr Graphics::Dimension kKeyboardSize{800, 164};

const Letters& LettersFor(std::string_view language);

/// All keys of a page; their cells do not overlap.
std::vector<KeyPlace> PlaceKeys(const Letters& letters, KeyPage page);

/// What a long press on the small letter or the sign offers, the likeliest first.
std::u16string AlternativesOf(const Letters& letters, char16_t character);

}  // namespace Osp::Ui
