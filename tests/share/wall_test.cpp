// From the answer of the search to the page of the wall.
#include <chrono>
#include <gtest/gtest.h>

#include "share/wall/wall_page.h"
#include "share/wall/wall_scan.h"

namespace Kivo {
namespace {

using Osp::Base::String;

constexpr const char* kHead =
    "<html><head><style>img,span { position:absolute; border:0px; overflow:hidden; }</style></head>"
    "<body style='background-color:#000000;'>";
constexpr const char* kMosaic =
    "<div>"
    "<span style='width:191px; height:191px; top:0px; left:0px'><a href='http://A/'><img "
    "style='display:block; top:0px; left:0px' src='https://A.png' width=270 height=192></a></span>"
    "<span style='width:383px; height:191px; top:193px; left:0px'><a href='http://B/'><img "
    "style='display:block; top:0px; left:0px' src='https://B.png' width=384 height=271></a></span>"
    "<span style='width:225px; height:319px; top:0px; left:577px'><a href='http://A/'><img "
    "style='display:block; top:0px; left:-35px' src='https://A.png' width=297 "
    "height=320></a></span>"
    "<span style='width:190px; height:191px; top:193px; left:385px'><a href='http://B/'><img "
    "style='display:block; top:0px; left:-41px' src='https://B.png' width=273 "
    "height=192></a></span>"
    "<span style='width:225px; height:63px; top:321px; left:577px'><a href='http://A/'><img "
    "style='display:block; top:-197px; left:0px' src='https://A.png' width=226 "
    "height=268></a></span>"
    "<span style='width:382px; height:191px; top:0px; left:193px'><a href='http://B/'><img "
    "style='display:block; top:-39px; left:-1px' src='https://B.png' width=384 "
    "height=270></a></span>"
    "<span style='width:191px; height:94px; top:386px; left:0px'><a href='http://A/'><img "
    "style='display:block; top:0px; left:0px' src='https://A.png' width=191 height=95></a></span>"
    "<span style='width:191px; height:94px; top:386px; left:193px'><a href='http://B/'><img "
    "style='display:block; top:0px; left:0px' src='https://B.png' width=191 height=95></a></span>"
    "<span style='width:415px; height:94px; top:386px; left:385px'><a href='http://A/'><img "
    "style='display:block; top:0px; left:0px' src='https://A.png' width=416 height=95></a></span>"
    "</div>";
constexpr const char* kFoot =
    "<div style='position:absolute; width:800px; height:30px; left:0px; top:0px; z-index:2; "
    "background-color:#666666; opacity:0.5;'></div><div style='position:absolute; width:456px; "
    "height:20px; left:172px; top:5px; z-index:3; font-size:16pt; color:#FFFFFF;'>KIVO Walls : "
    "Photos "
    "from Twitter by shared on Twitpic</div></body></html>";

std::string ScanText(const std::string& answer) {
    std::string text;
    for (const WallItem& item : ScanWall(String(std::string_view(answer)))) {
        text += item.link.ToUtf8() + " " + item.thumbnail.ToUtf8() + ";";
    }
    return text;
}

std::string Result(const std::string& link, const std::string& thumbnail) {
    return R"({"id":1,"link":")" + link + R"(","thumb":")" + thumbnail + R"(","text":"x"},)";
}

TEST(WallPage, IsTheMosaicWithAnItemPerCell) {
    const std::vector<WallItem> items{{"http://B/", "https://B.png"},
                                      {"http://A/", "https://A.png"}};
    int next = 10;  // mosaic 4, then the items in turn
    const String page = ComposeWall(items, [&] { return next++; });
    EXPECT_EQ(page.ToUtf8(), std::string(kHead) + kMosaic + kFoot);
    EXPECT_EQ(next, 20);
    EXPECT_EQ(ComposeEmptyWall().ToUtf8(), std::string(kHead) + kFoot);
    EXPECT_EQ(ComposeWall({}, [&] { return next++; }), ComposeEmptyWall());
}

TEST(WallScan, TakesLinksAndThumbnailsInTheirOrder) {
    EXPECT_EQ(ScanText("[" + Result("http:\\/\\/p\\/1", "http:\\/\\/t\\/1") +
                       Result("https://p/2", "https://t/2")),
              "http://p/1 http://t/1;https://p/2 https://t/2;");
    EXPECT_EQ(ScanText(Result("http://p/1", "http://t/1").substr(0, 60)), "http://p/1 http://t/1;");
}

TEST(WallScan, EndsWhereASearchFindsNothing) {
    const std::string whole =
        Result("http://p/1", "http://t/1") + Result("http://p/2", "http://t/2");
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        const std::string text = ScanText(whole.substr(0, length));
        EXPECT_TRUE(text.empty() || text.starts_with("http://p/1 http://t/1;")) << text;
    }
    for (const char* answer :
         {"", "[]", "linklinklinklink", "link\":\"http://a\",thumb", "}}}}}}}}}}}}",
          "link,thumb,}link,thumb,}", "\\\\\\\\\\\\\\\\\\\\\\\\\\\\"}) {
        EXPECT_EQ(ScanText(answer), "") << answer;
    }
}

TEST(WallScan, LeavesOutWhatCouldGetOutOfThePage) {
    const std::string good = "http://p/1";
    const std::string longest = "http://" + std::string(2041, 'a');
    std::string answer;
    for (const std::string& bad :
         {std::string("javascript:alert(1)"), std::string("data:image/png,"),
          std::string("file:///"), std::string(), std::string("http:/a"),
          std::string("http://a'onload="), std::string("http://a<b"), std::string("http://a>b"),
          std::string("http://a`b"), std::string("http://a\x01"), std::string("http://a\nb"),
          std::string("http://a\x7F"), std::string("http://a\"b"), std::string("http://a\u0085"),
          longest + "a"}) {
        answer += Result(bad, good) + Result(good, bad);
    }
    EXPECT_EQ(ScanText(answer), "");
    EXPECT_EQ(ScanText(answer + Result(longest, good)), longest + " " + good + ";");
}

TEST(WallScan, TimeIsLinearInTheAnswer) {
    std::string answer;
    for (int i = 0; i < 50'000; ++i) answer += Result("http://p/1", "http://t/1");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(ScanWall(String(std::string_view(answer))).size(), 50'000U);
    // Something like 50 ms; quadratic, it would be minutes.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

}  // namespace
}  // namespace Kivo
