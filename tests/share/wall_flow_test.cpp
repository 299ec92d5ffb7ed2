// The photo wall, used with one finger.
#include <algorithm>

#include "tests/share/sharing_phone.h"

namespace Kivo::Testing {
namespace {

constexpr const char* kSearch = "GET http://localhost:8442/search/show?q=%23KIVO&type=mixed&page=1";
constexpr const char* kPage = "data localhost text/html UTF-8 no scripts <html>";
constexpr const char* kEmpty =
    "background-color:#000000;'><div style='position:absolute; width:800px";
constexpr Spot kWallButton{750, 345};

class WallFlowTest : public SharingTest {
  protected:
    void Open() {
        Begin();
        OpenAlbum();
        Do({Tap(kWallButton), "wait 50", "expect form KivoWallForm"});
        EXPECT_EQ(TakeLoads().size(), 1U) << "the placeholder";
        Finish("localhost");
    }
    void AnswerWith(const std::string& address) {
        Answer(200,
               R"([{"link":"http:\/\/p\/)" + address + R"(","thumb":"http:\/\/t\/1","x":1},])");
    }
    /// Whether the last page that was shown holds `text`.
    bool Shows(const std::string& text) {
        const Log loads = TakeLoads();
        return !loads.empty() && loads.back().starts_with(kPage) &&
               loads.back().find(text) != std::string::npos;
    }
};

TEST_F(WallFlowTest, FetchesOnceAndMoreWhenAsked) {
    Open();
    EXPECT_EQ(LastRequest(), kSearch);
    AnswerWith("one");
    EXPECT_TRUE(Shows("<a href='http://p/one'>"));
    Finish("localhost");
    EXPECT_EQ(Requests(), 1U);
    Do({"key soft0", "wait 50", "key soft0", "wait 50"});
    EXPECT_EQ(Requests(), 3U);
    EXPECT_EQ(transport_->exchanges[1]->client, nullptr) << "given up for the next";
    AnswerWith("two");
    EXPECT_TRUE(Shows("<a href='http://p/two'>"));
    Do({"key soft0", "wait 50"});
    Answer(500, "no");
    EXPECT_EQ(TakeLoads(), Log{}) << "stays as it is";
    Do({"key soft0", "wait 50"});
    Answer(200);
    EXPECT_TRUE(Shows("<a href='http://p/two'>")) << "nothing was said";
    Do({"key soft0", "wait 50"});
    Answer(200, "[]");
    EXPECT_TRUE(Shows(kEmpty));
    Do({"key soft0", "wait 50"});
    AnswerWith("three");
    Do({"key soft0", "wait 50"});
    Break();
    EXPECT_TRUE(Shows(kEmpty));
}

TEST_F(WallFlowTest, GoesBackFromAPictureToTheMosaicAndFromThereToTheAlbum) {
    Open();
    AnswerWith("one");
    Finish("localhost");
    (void)TakeLoads();
    Finish("http://p/one");
    Do({"key back", "wait 50", "expect form KivoWallForm"});
    EXPECT_TRUE(Shows("<a href='http://p/one'>"));
    Do({"key back", "wait 50", "expect form AlbumForm"});
    EXPECT_FALSE(engine_.HasView());
    (void)TakeLoads();
    Do({Tap(kWallButton), "wait 50", "expect form KivoWallForm"});
    EXPECT_TRUE(Shows("<a href='http://p/one'>")) << "as it was left";
    Finish("localhost");
    EXPECT_EQ(Requests(), 1U);
    Finish("http://p/one");
    Do({"key back", "wait 50"});
    Finish("localhost");
    EXPECT_EQ(Requests(), 2U) << "a new one, since that one is gone";
    Do({"key soft1", "wait 50", "expect form AlbumForm"});
    EXPECT_FALSE(IsUnderWay());
    Do({Tap(kWallButton), "wait 50"});
    Finish("localhost");
    EXPECT_EQ(Requests(), 3U) << "nothing had come";
    Do({"background", "wait 50"});
    EXPECT_FALSE(IsUnderWay());
    Do({"foreground", "wait 50", "key soft1", "wait 50"});
    LeaveForm(*phone_);
}

}  // namespace
}  // namespace Kivo::Testing
