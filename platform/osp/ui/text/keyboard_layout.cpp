// A row of ten keys at a pitch of 80 fills the screen's width; a shorter one is centred, and its
// first and last cell reach as far as the screen's edges, or Shift and Delete. So there is no place
// between two keys that is neither's.
#include "osp/ui/text/keyboard_layout.h"

#include <algorithm>

namespace Osp::Ui {

namespace {

constexpr int kPitchX = 80;
constexpr int kPitchY = 40;
constexpr int kGap = 4;          // around a keycap
constexpr int kTop = 2;          // of the first row's pitch
constexpr int kSideWidth = 120;  // of the keys at the ends of the lower rows

constexpr Letters kLetters[] = {
    {"", {{u"qwertyuiop", u"asdfghjkl", u"zxcvbnm"}}, u""},
    {"de", {{u"qwertzuiop", u"asdfghjkl", u"yxcvbnm"}}, u"äöüß"},
    {"fr", {{u"azertyuiop", u"qsdfghjklm", u"wxcvbn'"}}, u"éèàçù"},
    {"es", {{u"qwertyuiop", u"asdfghjkl", u"zxcvbnm"}}, u"áéíóúñ"},
    {"it", {{u"qwertyuiop", u"asdfghjkl", u"zxcvbnm"}}, u"àèìòù"},
    {"pt", {{u"qwertyuiop", u"asdfghjkl", u"zxcvbnm"}}, u"ãõçáéíóú"},
    {"pl", {{u"qwertyuiop", u"asdfghjkl", u"zxcvbnm"}}, u"ąćęłńóśżź"},
    {"cs", {{u"qwertzuiop", u"asdfghjkl", u"yxcvbnm"}}, u"áčéěíňóřšťúýž"},
    {"hu", {{u"qwertzuiop", u"asdfghjkl", u"yxcvbnm"}}, u"áéíóöúü"},
    {"sv", {{u"qwertyuiop", u"asdfghjkl", u"zxcvbnm"}}, u"åäö"},
};
constexpr KeyRows kDigits{{u"1234567890", u"@#€%&-+()/", u"*\"':;!?"}};
constexpr KeyRows kSigns{{u"~`|\\^°[]{}", u"£$¥¢§©®™•…", u"_=<>¡¿÷"}};

struct Alternatives {
    char16_t character;
    std::u16string_view others;
};

constexpr Alternatives kAlternatives[] = {
    {u'a', u"àáâäæãåāą"}, {u'c', u"çćč"}, {u'd', u"ďđð"},     {u'e', u"èéêëēėęě"},  {u'g', u"ğ"},
    {u'i', u"îïíīįìı"},   {u'l', u"ł"},   {u'n', u"ñńň"},     {u'o', u"ôöòóœøōõő"}, {u'r', u"ř"},
    {u's', u"ßśšş"},      {u't', u"þť"},  {u'u', u"ûüùúūűů"}, {u'y', u"ÿý"},        {u'z', u"žźż"},
    {u'.', u"…!?"},       {u',', u";:"},  {u'\'', u"’‘‚"},    {u'"', u"“”„«»"},     {u'-', u"–—"},
    {u'?', u"¿"},         {u'!', u"¡"},   {u'%', u"‰"},       {u'€', u"£$¥"},
};
static_assert(std::ranges::all_of(kAlternatives,
                                  [](const Alternatives& a) { return a.others.size() <= 9; }));

constexpr bool Fits(const KeyRows& keys) {
    return keys.rows[0].size() == 10 && keys.rows[1].size() <= 10 && keys.rows[2].size() == 7;
}
static_assert(Fits(kDigits) && Fits(kSigns));
static_assert(std::ranges::all_of(kLetters, [](const Letters& l) { return Fits(l.keys); }));

class Placing {
  public:
    /// A key whose pitch begins at `x` in a row from 0; it is touched from `left` to `right`.
    void Add(KeyKind kind, std::u16string text, int row, int x, int width, int left, int right) {
        const int y = kTop + row * kPitchY;
        const int top = row == 0 ? 0 : y;
        const int bottom = row == 3 ? kKeyboardSize.height : y + kPitchY;
        keys_.push_back({kind,
                         std::move(text),
                         {left, top, right - left, bottom - top},
                         {x - left + kGap, y - top + kGap / 2, width - 2 * kGap, kPitchY - kGap}});
    }
    void Add(KeyKind kind, std::u16string text, int row, int x, int width) {
        Add(kind, std::move(text), row, x, width, x, x + width);
    }
    /// The characters of a row, centred, touched from `left` to `right`.
    void AddRow(std::u16string_view characters, int row, int left, int right) {
        const int count = static_cast<int>(characters.size());
        const int first = (left + right - count * kPitchX) / 2;
        for (int i = 0; i < count; ++i) {
            const int x = first + i * kPitchX;
            Add(KeyKind::kText, std::u16string(1, characters[static_cast<std::size_t>(i)]), row, x,
                kPitchX, i == 0 ? left : x, i == count - 1 ? right : x + kPitchX);
        }
    }
    std::vector<KeyPlace> Take() { return std::move(keys_); }

  private:
    std::vector<KeyPlace> keys_;
};

}  // namespace

const Letters& LettersFor(std::string_view language) {
    const auto* const found = std::ranges::find(kLetters, language, &Letters::language);
    return found == std::end(kLetters) ? kLetters[0] : *found;
}

std::vector<KeyPlace> PlaceKeys(const Letters& letters, KeyPage page) {
    const bool isLetters = page == KeyPage::kLetters;
    const KeyRows& keys = isLetters ? letters.keys : page == KeyPage::kDigits ? kDigits : kSigns;
    const int width = kKeyboardSize.width;
    const int right = width - kSideWidth;
    Placing placing;
    placing.AddRow(keys.rows[0], 0, 0, width);
    placing.AddRow(keys.rows[1], 1, 0, width);
    placing.Add(isLetters ? KeyKind::kShift : KeyKind::kPage, {}, 2, 0, kSideWidth);
    placing.AddRow(keys.rows[2], 2, kSideWidth, right);
    placing.Add(KeyKind::kDelete, {}, 2, right, kSideWidth);
    placing.Add(isLetters ? KeyKind::kSymbols : KeyKind::kLetters, {}, 3, 0, kSideWidth);
    placing.Add(KeyKind::kText, u",", 3, 120, kPitchX);
    placing.Add(KeyKind::kSpace, u" ", 3, 200, 4 * kPitchX);
    placing.Add(KeyKind::kText, u".", 3, 520, kPitchX);
    placing.Add(KeyKind::kHide, {}, 3, 600, kPitchX);
    placing.Add(KeyKind::kEnter, u"\n", 3, right, kSideWidth);
    return placing.Take();
}

std::u16string AlternativesOf(const Letters& letters, char16_t character) {
    const auto* const found = std::ranges::find(kAlternatives, character, &Alternatives::character);
    if (found == std::end(kAlternatives)) return {};
    std::u16string others(found->others);
    std::stable_partition(others.begin(), others.end(), [&](char16_t other) {
        return letters.own.find(other) != letters.own.npos;
    });
    return others;
}

}  // namespace Osp::Ui
