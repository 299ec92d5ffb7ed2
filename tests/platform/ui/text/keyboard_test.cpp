#include <set>

#include "osp/ui/text/keyboard_layout.h"
#include "tests/platform/ui/text/text_fixture.h"

namespace Osp::Ui {
namespace {

using namespace std::chrono_literals;

TEST(KeyboardLayout, EveryPlaceBelongsToOneKey) {
    for (const char* language : {"", "de", "fr"}) {
        for (const KeyPage page : kKeyPages) {
            int area = 0;
            for (const KeyPlace& key : PlaceKeys(LettersFor(language), page)) {
                area += key.cell.width * key.cell.height;
                const bool isInside = key.keycap.x >= 0 && key.keycap.y >= 0 &&
                                      key.keycap.x + key.keycap.width <= key.cell.width &&
                                      key.keycap.y + key.keycap.height <= key.cell.height;
                EXPECT_TRUE(isInside) << Base::String(key.text).ToUtf8();
                EXPECT_EQ(key.keycap.height, 36);
                EXPECT_GE(key.keycap.width, 72);
            }
            EXPECT_EQ(area, kKeyboardSize.width * kKeyboardSize.height) << language;
        }
    }
}

TEST(KeyboardLayout, FollowsTheLanguage) {
    EXPECT_EQ(PlaceKeys(LettersFor("de"), KeyPage::kLetters)[5].text, u"z");
    EXPECT_EQ(PlaceKeys(LettersFor("fr"), KeyPage::kLetters)[0].text, u"a");
    EXPECT_EQ(PlaceKeys(LettersFor("xx"), KeyPage::kLetters)[5].text, u"y");
    EXPECT_EQ(AlternativesOf(LettersFor("de"), u'o').front(), u'ö');
    EXPECT_EQ(AlternativesOf(LettersFor(""), u'o').front(), u'ô');
    EXPECT_TRUE(AlternativesOf(LettersFor(""), u'q').empty());
}

class KeyboardTest : public TextTest {
  protected:
    KeyboardTest() { Open(); }
    std::uint32_t Colour(Graphics::Point key) { return PixelAt(key.x - 30, key.y - 10); }
};

TEST_F(KeyboardTest, ShowsAKeyAtOnceAndTypesItWhenTheFingerIsLiftedInsideItsCell) {
    const std::uint32_t idle = Colour(kQ);
    input_.Press({1, 317});  // the corner of the cell, beside what is seen of the key
    EXPECT_NE(Colour(kQ), idle);
    EXPECT_EQ(Text(), "");
    input_.Release({79, 357});
    EXPECT_EQ(Text(), "q");
    input_.Press(kQ);
    input_.Move({81, 338});
    EXPECT_EQ(Colour(kQ), idle);
    input_.Release({81, 338});
    input_.Press(kQ);
    input_.Cancel();
    EXPECT_EQ(Text(), "q");
    Tap(kEnter);
    Tap(kPage);
    Tap(kQ);
    Tap(kShift);
    Tap(kQ);
    Tap(kPage);
    Tap(kQ);
    EXPECT_EQ(Text(), "q\n1~q");
}

TEST_F(KeyboardTest, ShiftIsForOneLetterOrAfterTwoQuickTapsForAll) {
    Tap(kShift);
    Tap(kA);
    Tap(kA);
    Tap(kShift);
    Tap(kShift);
    Tap(kA);
    Tap(kA);
    Tap(kShift);
    Tap(kA);
    Tap(kShift);
    loop_.Pass(500ms);
    Tap(kShift);
    Tap(kA);
    EXPECT_EQ(Text(), "AaAAaa");
}

TEST_F(KeyboardTest, DeleteRepeatsWhileItIsHeld) {
    (void)area_->SetText("abcdefghij");
    Tap(kDelete);
    EXPECT_EQ(Text(), "abcdefghi");
    input_.Press(kDelete);
    loop_.Pass(399ms);
    EXPECT_EQ(Text(), "abcdefghi");
    loop_.Pass(1ms + 2 * 60ms);
    EXPECT_EQ(Text(), "abcdef");
    input_.Release(kDelete);
    loop_.Pass(1s);
    EXPECT_EQ(Text(), "abcdef") << "lifted, it deletes no more";
    input_.Press(kDelete);
    loop_.Pass(400ms);
    input_.LetGo();
    loop_.Pass(1s);
    EXPECT_EQ(Text(), "abcde") << "and in the background neither";
    input_.Press(kDelete);
    input_.Move(kO);
    loop_.Pass(1s);
    EXPECT_EQ(Text(), "abcde") << "nor when the finger has slid off";
}

TEST_F(KeyboardTest, ALongPressOffersAlternatives) {
    const struct {
        Graphics::Point key, lifted;
        const char* typed;
    } cases[] = {
        {kO, kO, "ô"},                   // the likeliest without any way
        {kO, {680 - 2 * 64, 290}, "ò"},  // from the right half to the left
        {kA, {40 + 64, 330}, "á"},
        {kA, {790, 330}, "ą"},  // beyond the row's end, its last
        {kA, {80, 470}, ""},    // far below, none
        {kQ, kQ, "q"},          // of which there are none
    };
    for (const auto& c : cases) {
        (void)area_->Clear();
        input_.Press(c.key);
        loop_.Pass(400ms);
        input_.Move(c.lifted);
        input_.Release(c.lifted);
        EXPECT_EQ(Text(), c.typed);
    }
    (void)area_->Clear();
    Tap(kShift);
    input_.Press(kA);
    loop_.Pass(400ms);
    input_.Release(kA);
    Tap(kA);
    EXPECT_EQ(Text(), "Àa") << "a capital, and Shift is spent";
    input_.Press(kA);
    loop_.Pass(400ms);
    input_.Cancel();
    EXPECT_EQ(Text(), "Àa") << "not meant";
}

TEST_F(KeyboardTest, ComesWithAFingerAndGoesWithARealKey) {
    EXPECT_TRUE(screen_.IsKeyboardShown());
    const Graphics::Point middle{400, 140};
    Tap(kHide);
    EXPECT_FALSE(screen_.IsKeyboardShown());
    Tap({400, 200});
    EXPECT_TRUE(screen_.IsKeyboardShown());
    textInput_.UseRealKeyboard();
    EXPECT_FALSE(screen_.IsKeyboardShown());
    (void)popup_->SetShowState(false);
    Open();
    EXPECT_FALSE(screen_.IsKeyboardShown()) << "the real one was used last";
    Tap({400, 200});
    EXPECT_TRUE(screen_.IsKeyboardShown());
    Tap(middle);
    EXPECT_TRUE(screen_.IsKeyboardShown());
}

}  // namespace
}  // namespace Osp::Ui
