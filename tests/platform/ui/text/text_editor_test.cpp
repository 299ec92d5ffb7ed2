#include "osp/ui/text/text_editor.h"

#include <gtest/gtest.h>
#include <map>
#include <vector>

#include <osp/base/string.h>

namespace Osp::Ui {
namespace {

using Step = TextEditor::Step;

// In the tables "|" is the caret, and what lies between "[" and "|" is selected.
TextEditor From(std::u16string marked) {
    const auto take = [&](char16_t mark) {
        const auto place = marked.find(mark);
        if (place != marked.npos) marked.erase(place, 1);
        return place;
    };
    const auto anchor = take(u'[');
    const auto caret = static_cast<int>(take(u'|'));
    TextEditor editor;
    editor.SetText(marked);
    const int other = anchor == marked.npos ? caret : static_cast<int>(anchor);
    editor.MoveTo(other > caret ? other - 1 : other, false);  // the caret's mark stood before it
    editor.MoveTo(caret, true);
    return editor;
}

std::string Marked(const TextEditor& editor) {
    std::u16string text = editor.Text();
    const auto [begin, end] = editor.Selection();
    text.insert(static_cast<std::size_t>(editor.Caret()), u"|");
    const int anchor = begin == editor.Caret() ? end + 1 : begin;
    if (editor.HasSelection()) text.insert(static_cast<std::size_t>(anchor), u"[");
    return Base::String(text).ToUtf8();
}

std::string Utf8(const char16_t* text) {
    return Base::String(std::u16string(text)).ToUtf8();
}

struct Case {
    const char16_t* before;
    Step step;
    const char16_t* after;
};

TEST(TextEditor, ACharacterIsOneStepWhateverItIsMadeOf) {
    const Case cases[] = {
        {u"ab|", Step::kCharacterBefore, u"a|b"},
        {u"a😀|", Step::kCharacterBefore, u"a|😀"},
        {u"a|e\u0301\u0323b", Step::kCharacterAfter, u"ae\u0301\u0323|b"},
        {u"|👩\u200D👩\u200D👧!", Step::kCharacterAfter, u"👩\u200D👩\u200D👧|!"},
        {u"|ab", Step::kCharacterBefore, u"|ab"},
        {u"ab|", Step::kCharacterAfter, u"ab|"},
        {u"|one, two", Step::kWordAfter, u"one, |two"},
        {u"one, two|", Step::kWordBefore, u"one, |two"},
        {u"a\nb|c", Step::kStart, u"|a\nbc"},
        {u"a[bc|d", Step::kCharacterAfter, u"abc|d"},
        {u"a|bc[d", Step::kCharacterAfter, u"abc|d"},
    };
    for (const Case& c : cases) {
        TextEditor editor = From(c.before);
        editor.Move(c.step, false);
        EXPECT_EQ(Marked(editor), Utf8(c.after)) << Utf8(c.before);
    }
}

TEST(TextEditor, DeletesWholeCharactersAndSelections) {
    const Case cases[] = {
        {u"a😀|b", Step::kCharacterBefore, u"a|b"},   {u"a|e\u0301b", Step::kCharacterAfter, u"a|b"},
        {u"a[bc|d", Step::kCharacterBefore, u"a|d"}, {u"one two|", Step::kWordBefore, u"one |"},
        {u"|", Step::kCharacterBefore, u"|"},
    };
    for (const Case& c : cases) {
        TextEditor editor = From(c.before);
        editor.Delete(c.step);
        EXPECT_EQ(Marked(editor), Utf8(c.after)) << Utf8(c.before);
    }
}

TEST(TextEditor, TypingReplacesTheSelectionUpToTheLimit) {
    const struct {
        const char16_t* before;
        int limit;
        const char16_t* typed;
        const char16_t* after;
    } cases[] = {
        {u"a[bc|d", 9, u"X", u"aX|d"},
        {u"ab|", 4, u"cdef", u"abcd|"},
        {u"ab|", 3, u"😀", u"ab|"},
        {u"[abc|", 3, u"xyz", u"xyz|"},
        {u"|", 9, u"a\r\nb\u0007\0c", u"a\nb|"},
        {u"|\u0301x", 9, u"e", u"e\u0301|x"},  // one character now, and the caret not inside
        {u"e|x", 9, u"\u0301", u"e\u0301|x"},
    };
    for (const auto& c : cases) {
        TextEditor editor = From(c.before);
        editor.SetLimit(c.limit);
        editor.Insert(c.typed);
        EXPECT_EQ(Marked(editor), Utf8(c.after)) << Utf8(c.before);
    }
    TextEditor editor = From(u"abcde😀|");
    editor.SetLimit(6);
    EXPECT_EQ(Marked(editor), "abcde|") << "not half of a pair";
}

TEST(TextEditor, SelectsTheWordThatIsTouched) {
    const std::map<int, const char16_t*> cases{{0, u"[naïve| and, well"},
                                               {5, u"[naïve| and, well"},
                                               {7, u"naïve [and|, well"},
                                               {11, u"naïve and, [well|"},
                                               {14, u"naïve and, [well|"}};
    for (const auto& [position, after] : cases) {
        TextEditor editor = From(u"|naïve and, well");
        editor.SelectWord(position);
        EXPECT_EQ(Marked(editor), Utf8(after)) << position;
    }
    TextEditor editor = From(u"a , b|");
    editor.SelectWord(2);
    EXPECT_FALSE(editor.HasSelection());
}

TEST(TextPlaces, TranslateBetweenTheTwoEncodings) {
    const std::u16string text = u"aé€😀\xD83D!";  // with half a pair
    const std::map<int, int> places{{0, 0}, {1, 1}, {2, 3}, {3, 6}, {5, 10}, {6, 13}, {7, 14}};
    for (const auto& [position, index] : places) {
        EXPECT_EQ(ToUtf8Index(text, position), index);
        EXPECT_EQ(FromUtf8Index(text, index), position);
    }
    EXPECT_EQ(Base::String(text).ToUtf8().size(), 14u);
}

}  // namespace
}  // namespace Osp::Ui
