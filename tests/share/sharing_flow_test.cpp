// Signing in and sharing, from the first touch to what the album says in the end.
#include <algorithm>

#include "app/model/action_ids.h"
#include "tests/share/multipart_parser.h"
#include "tests/share/sharing_phone.h"

namespace Kivo::Testing {
namespace {

constexpr const char* kBoundary = "---------------------------7da338270ba0";
constexpr const char* kRequestToken =
    "oauth_token=RT&oauth_token_secret=RS&oauth_callback_confirmed=true";
constexpr const char* kAccessToken = "oauth_token=AT&oauth_token_secret=AS&user_id=1&screen_name=x";
constexpr const char* kPinPage = "<html><div id=\"oauth_pin\">7654321</div>";
constexpr const char* kDenialPage = "<html>Connection Denied</html>";
constexpr const char* kAuthorizePage = "https://localhost:8440/oauth/authorize?oauth_token=RT";
constexpr const char* kPlaceholder =
    "data localhost text/html UTF-8 <html><body>Wait for loading</body></html>";
constexpr const char* kFacebookPage =
    "https://localhost:8443/oauth/"
    "authorize?client_id=9b1e4c7a2d8f3065e1a4b7c9d2f05e18&redirect_uri="
    "http://localhost:8444/connect/login_success.html&type=user_agent&display=popup&scope="
    "offline_access";
const std::string kToken(128, 'f');
const std::string kSignedIn =
    "http://localhost:8444/connect/login_success.html#access_token=" + kToken + "&expires_in=0";

class FlowTest : public SharingTest {
  protected:
    /// From the request token to the page with the PIN.
    void OpenTwitterPage() {
        Answer(200, kRequestToken);
        With([this] { engine_.Answer(kAuthorizePage); });
    }
    void OpenFacebookPage() {
        Finish("localhost");
        EXPECT_EQ(TakeLoads().back(), std::string("url ") + kFacebookPage);
    }
    void WriteMessage(const std::string& text) {
        Do({"expect form AlbumForm", "expect text Enter message", "text " + text});
        Press(kActionMessageDone);
    }
    /// The upload, whose parts are these; `status` is its answer.
    void Upload(const std::string& uri, const std::string& fileField,
                const std::map<std::string, std::string>& fields, int status) {
        EXPECT_EQ(LastRequest(), "POST " + uri);
        const auto parts = ParseMultipart(TakeBody(), kBoundary);
        ASSERT_TRUE(parts);
        EXPECT_EQ(parts->fields, fields);
        EXPECT_EQ(parts->file.header, "form-data; name=\"" + fileField +
                                          "\"; filename=\"/Media/Images/KIVO0000.jpg\"\r\n"
                                          "Content-Type: application/octet-stream");
        EXPECT_EQ(parts->file.content, photo_);
        EXPECT_EQ(Last().request.fields[0].first, "Content-Type");
        EXPECT_EQ(Last().request.fields[0].second,
                  std::string("multipart/form-data; boundary=") + kBoundary);
        EXPECT_FALSE(phone_->Button(kActionCancelShare).is_null()) << "in progress";
        Answer(status);
        EXPECT_TRUE(phone_->Button(kActionCancelShare).is_null());
    }
    void UploadToTwitpic(const std::string& message, const std::string& token,
                         const std::string& secret, int status) {
        Upload("http://localhost:8441/1/uploadAndPost.xml", "media",
               {{"key", "4f2a9c81e6b7d035a1c8e94f7b2d6031"},
                {"consumer_token", "Qk7pLm2ZxR4tVb9NcW3yHd"},
                {"consumer_secret", "Hd83kQpZ0vLm4TxWc9RbNy2UeGj7oSa5FqKi1XrDl"},
                {"oauth_token", token},
                {"oauth_secret", secret},
                {"message", message}},
               status);
    }
    void UploadToFacebook(const std::string& message, int status) {
        Upload("https://localhost:8443/me/photos", "fileName",
               {{"access_token", kToken}, {"source", "@"}, {"message", message}}, status);
    }
};

TEST_F(FlowTest, TwitterIsSignedInToFromTheSettings) {
    Begin();
    OpenSettings(*phone_);
    SwitchTwitter();
    Do({"expect form SnsShareForm"});
    EXPECT_EQ(TakeLoads().back(), kPlaceholder);
    EXPECT_EQ(LastRequest(), "POST https://localhost:8440/oauth/request_token");
    const auto& fields = Last().request.fields;
    EXPECT_EQ(fields[0].first + ": " + fields[0].second,
              "Content-type: application/x-www-form-urlencoded");
    EXPECT_EQ(fields[1].first, "Authorization");
    EXPECT_EQ(fields[1].second.find("OAuth realm=\"https://localhost:8440/\", oauth_nonce=\""), 0U);
    EXPECT_EQ(TakeBody().find("oauth_consumer_key=Qk7pLm2ZxR4tVb9NcW3yHd&oauth_nonce="), 0U);
    OpenTwitterPage();
    EXPECT_EQ(TakeLoads(), Log{std::string("url ") + kAuthorizePage});
    With([this] {
        for (const char* url : {"http://localhost:8440/", "https://localhost:8441/"})
            engine_.Answer(url);
    });
    using Osp::Web::Controls::DecisionPolicy;
    EXPECT_EQ(engine_.decisions,
              (std::vector<std::optional<DecisionPolicy>>{
                  DecisionPolicy::kDownload, DecisionPolicy::kRender, DecisionPolicy::kRender}));
    for (const char* page : {"<p>Sign in", "<div id=\"oauth", "_pin\">7654321"}) {
        Chunk(page);
        EXPECT_EQ(TakeLoads(),
                  Log{std::string("data https://localhost:8440/ text/html UTF-8 ") + page});
    }
    Chunk(kPinPage);
    EXPECT_EQ(LastRequest(), "POST https://localhost:8440/oauth/access_token");
    EXPECT_NE(TakeBody().find("&oauth_token=RT&oauth_timestamp="), std::string::npos);
    EXPECT_NE(TakeBody().find("&oauth_verifier=7654321&oauth_version=1.0"), std::string::npos);
    Answer(200, kAccessToken);
    Do({"expect form SettingForm"});
    EXPECT_EQ(TakeLoads(), Log{"end"}) << "no page is left";
    EXPECT_NE(Registry().find("TW_TOKEN=AT"), std::string::npos) << Registry();
    EXPECT_NE(Registry().find("TW_TOKEN_SECRET=AS"), std::string::npos) << Registry();
    SwitchTwitter();
    Do({"expect form SettingForm"});
    EXPECT_EQ(Registry().find("TW_TOKEN"), std::string::npos) << "signed out again";
}

TEST_F(FlowTest, TwitterIsSignedInToAndSharedWithFromTheAlbum) {
    Begin();
    OpenAlbum();
    ShareWithTwitter();
    Do({"expect form SnsShareForm"});
    OpenTwitterPage();
    Chunk(kPinPage);
    WriteMessage("Hello");
    EXPECT_EQ(LastRequest(), "POST https://localhost:8440/oauth/access_token");
    Answer(200, kAccessToken);
    UploadToTwitpic("Hello #KIVO", "AT", "AS", 200);
    EXPECT_TRUE(Says("Your picture has been shared."));
    Press(kActionShareOutcomeSeen);
    // Once more, with the message as it was left.
    Ask(kRequestTwitterShare);
    EXPECT_EQ(ParseMultipart(TakeBody(), kBoundary)->fields["message"], "Hello #KIVO #KIVO");
    Answer(500);
    EXPECT_TRUE(Says("Twitter did not take the picture."));
    Do({"key back"});
    ShareWithTwitter();
    Do({"expect form SnsShareForm"});
    EXPECT_NE(Registry().find("TW_TOKEN=AT"), std::string::npos) << "kept there";
}

TEST_F(FlowTest, FacebookIsSignedInToAndSharedWithFromTheAlbum) {
    Begin();
    OpenAlbum();
    ShareWithFacebook();
    OpenFacebookPage();
    for (const char* url :
         {"https://localhost:8443/login.php#access_token=1&expires_in=0", kFacebookPage}) {
        Finish(url);
        Do({"expect form SnsShareForm"});
    }
    With([this] { engine_.Answer(kAuthorizePage); });
    EXPECT_EQ(engine_.decisions.back(), Osp::Web::Controls::DecisionPolicy::kRender) << "no PIN";
    Finish(kSignedIn);
    WriteMessage("Hello");
    UploadToFacebook("Hello", 200);
    EXPECT_TRUE(Says("Your picture has been shared."));
    Press(kActionShareOutcomeSeen);
    ShareWithFacebook();
    WriteMessage("Again");
    UploadToFacebook("Again", 401);
    EXPECT_TRUE(Says("Facebook did not take the picture."));
    EXPECT_NE(Registry().find("FB_TOKEN=" + kToken), std::string::npos) << "kept there";
    Do({"key back"});
    LeaveForm(*phone_);
    OpenSettings(*phone_);
    SwitchFacebook();
    OpenFacebookPage();
    Finish(kSignedIn);
    Do({"expect form SettingForm"});
    SwitchFacebook();
    EXPECT_EQ(Registry().find("FB_TOKEN"), std::string::npos) << "signed out again";
}

TEST_F(FlowTest, WhoSaysNoComesBackWithNothingSignedIn) {
    Begin();
    OpenAlbum();
    ShareWithTwitter();
    OpenTwitterPage();
    Chunk(kDenialPage);
    Do({"expect form AlbumForm"});
    EXPECT_TRUE(Says("Nobody has signed in."));
    Press(kActionShareOutcomeSeen);
    ShareWithTwitter();
    OpenTwitterPage();
    Chunk(kPinPage);
    Press(kActionMessageCancelled);
    ShareWithTwitter();
    Do({"expect form SnsShareForm", "key soft1", "wait 50"});
    Press(kActionShareOutcomeSeen);
    ShareWithFacebook();
    OpenFacebookPage();
    Finish(kSignedIn + "&error_reason=user_denied");
    Do({"expect form AlbumForm", "wait 50"});
    EXPECT_TRUE(phone_->Button(kActionCancelShare).is_null()) << "not busy";
    LeaveForm(*phone_);
    OpenSettings(*phone_);
    SwitchTwitter();
    OpenTwitterPage();
    Chunk(kDenialPage);
    Do({"expect form SettingForm"});
    SwitchFacebook();
    OpenFacebookPage();
    Finish(kSignedIn + "&error_reason=user_denied");
    Do({"expect form SettingForm"});
    EXPECT_EQ(Registry().find("TOKEN"), std::string::npos) << Registry();
}

TEST_F(FlowTest, ClosingWorksAtEveryStep) {
    Begin();
    const auto reach = [this](bool isFromAlbum,
                              int step) {  // of a sign-in to Twitter, and to Facebook from 5 on
        if (step == 1) Break();
        if (step == 2) isFromAlbum ? Answer(401, kRequestToken) : Answer(200, "no tokens");
        if (step >= 3 && step < 5) OpenTwitterPage();
        if (step == 4) Do({"background", "wait 50", "foreground", "wait 50"});
        if (step == 6) OpenFacebookPage();
    };
    for (const bool isFromAlbum : {true, false}) {
        isFromAlbum ? OpenAlbum() : OpenSettings(*phone_);
        for (int step = 0; step <= 6; ++step) {
            SCOPED_TRACE(step);
            if (isFromAlbum) step < 5 ? ShareWithTwitter() : ShareWithFacebook();
            if (!isFromAlbum) step < 5 ? SwitchTwitter() : SwitchFacebook();
            Do({"expect form SnsShareForm"});
            reach(isFromAlbum, step);
            Do({"expect form SnsShareForm", step % 2 == 0 ? "key soft1" : "key back", "wait 50"});
            Do({isFromAlbum ? "expect form AlbumForm" : "expect form SettingForm"});
            EXPECT_FALSE(engine_.HasView());
            EXPECT_FALSE(IsUnderWay());
            if (isFromAlbum) Press(kActionShareOutcomeSeen);
        }
        LeaveForm(*phone_);
    }
}

TEST_F(FlowTest, AnUploadEndsWithItsConnectionOrByTheUser) {
    Begin({{"TW_TOKEN", "T"}, {"TW_TOKEN_SECRET", "S"}});
    OpenAlbum();
    const auto start = [this] {
        ShareWithTwitter();
        WriteMessage("Hello");
        EXPECT_TRUE(IsUnderWay());
    };
    start();
    Break();
    EXPECT_TRUE(Says("The connection failed."));
    Press(kActionShareOutcomeSeen);
    start();
    Press(kActionCancelShare);
    EXPECT_FALSE(IsUnderWay());
    EXPECT_FALSE(Says("picture")) << "the user knows";
    start();
    Do({"background", "wait 50", "foreground", "wait 50", "key left", "expect form AlbumForm"});
    EXPECT_TRUE(IsUnderWay()) << "goes on meanwhile";
    Press(kActionCancelShare);
    EXPECT_FALSE(IsUnderWay());
    start();
    Do({"background", "wait 50"});
    UploadToTwitpic("Hello #KIVO", "T", "S", 200);
    Do({"foreground", "wait 50"});
    EXPECT_TRUE(Says("Your picture has been shared."));
}

TEST_F(FlowTest, APhotographThatGetsShorterEndsTheUpload) {
    Begin({{"FB_TOKEN", "T"}});
    OpenAlbum();
    ShareWithFacebook();
    WriteMessage("Hello");
    std::filesystem::resize_file(folder_ / "Media/Images/KIVO0000.jpg", 100);
    EXPECT_LT(TakeBody().size(), 1000U) << "one boundary at its end";
    Do({"wait 100"});
    EXPECT_FALSE(IsUnderWay());
    EXPECT_TRUE(Says("The picture was not shared."));
}

}  // namespace
}  // namespace Kivo::Testing
