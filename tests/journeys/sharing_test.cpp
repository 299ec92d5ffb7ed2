// From the album and the settings to Twitter and Facebook, as a person does it.
#include <gtest/gtest.h>

#include "tests/journeys/sharing_fixture.h"
#include "tests/support/pictures/jpeg.h"
#include "tests/support/pictures/pictures.h"

namespace Kivo {
namespace {

using namespace std::chrono_literals;
using namespace Testing;
using Osp::Testing::ReadText;
using Osp::Testing::Within;

constexpr const char* kGreeting = "Grüße, été 日本 🌊";

class SharingTest : public SharingJourney, public testing::WithParamInterface<SharePlace> {
  protected:
    const SharePlace& Place() { return GetParam(); }
    bool IsTwitter() { return Place().name == std::string("Twitter"); }

    void ExpectUpload(std::size_t place, const std::string& message) {
        const auto received = peers_->Received();
        std::size_t at = received.size();
        for (std::size_t i = 0, count = 0; i < received.size(); ++i) {
            if (received[i]["target"] == Place().uploadPath && count++ == place) at = i;
        }
        ASSERT_LT(at, received.size()) << "no upload " << place;
        ASSERT_TRUE(received[at].contains("file")) << received[at].dump();
        EXPECT_EQ(received[at]["fields"]["message"], message);
        EXPECT_EQ(received[at]["file"]["filename"], "/Media/Images/KIVO0000.jpg");
        EXPECT_EQ(peers_->Content(at), ReadText(folder_ / "data/Media/Images/KIVO0000.jpg"));
    }
    /// What may be seen nowhere, as the servers know it.
    std::vector<std::string> Secrets() {
        std::vector<std::string> secrets{"hunter"};
        for (const Json& request : peers_->Received()) {
            for (const char* name : {"pin", "token"}) {
                if (request.contains(name)) secrets.push_back(request[name]);
            }
            for (const char* name : {"oauth_token", "oauth_secret", "access_token"}) {
                if (request.contains("fields") && request["fields"].contains(name)) {
                    secrets.push_back(request["fields"][name]);
                }
            }
        }
        return secrets;
    }
    /// While the program runs and has signed in.
    void ExpectNoSecretIsSeen() {
        Ask("registry");
        Ask("screen");
        const std::string process = "/proc/" + std::to_string(program_->Id());
        const std::string seen =
            printed_ + ReadText(process + "/cmdline") + ReadText(process + "/environ");
        const std::vector<std::string> secrets = Secrets();
        EXPECT_GE(secrets.size(), 3u) << "there should be some to look for";
        for (const std::string& secret : secrets) {
            EXPECT_EQ(seen.find(secret), std::string::npos) << secret;
        }
    }
    /// After the end.
    void ExpectNothingIsLeft() {
        for (const char* name : {"run", "tmp", "home"}) {
            for (const auto& [path, content] : Osp::Testing::ReadTree(folder_ / name)) {
                EXPECT_EQ(content.find(Place().tokenKey), std::string::npos) << path;
                EXPECT_EQ(path.find("web"), std::string::npos) << name << "/" << path;
            }
        }
        const std::string kept = folder_ / "data/kivo-camera";
        EXPECT_EQ(Osp::Testing::ModeOf(kept), 0700u);
        EXPECT_EQ(Osp::Testing::ModeOf(kept + "/registry.ini"), 0600u);
        const std::vector<std::string> secrets = Secrets();
        for (const auto& [path, content] : Osp::Testing::ReadTree(folder_.Path())) {
            if (path == "data/kivo-camera/registry.ini") continue;
            for (const std::string& secret : secrets) {
                EXPECT_EQ(content.find(secret), std::string::npos) << path;
            }
        }
    }
};

INSTANTIATE_TEST_SUITE_P(Places, SharingTest, testing::Values(kTwitter, kFacebook),
                         [](const auto& info) { return std::string(info.param.name); });

// What is given up first, so that nothing of it may be left to the sign-in that follows.
TEST_P(SharingTest, IsSignedInToOnceAndSharedWithTwice) {
    Store(EncodeJpeg(RandomPicture(1280, 960, Look::kGradient, 1)));
    StartInWindow();
    OpenAlbum();
    const auto expectGivenUp = [&] {
        if (IsTwitter()) return AwaitOutcome("Nobody has signed in.");
        Await("form AlbumForm");
    };

    Fault(Place(), {{"silent", true}, {"times", 1}}, false);
    ChoosePlace(Place());
    AwaitReceived(Place().signInService, Place().firstPath, 1);
    Touch(kCloseSoftkey);  // nothing but the placeholder
    AwaitOutcome("Nobody has signed in.");

    ChoosePlace(Place());
    ReachLogInPage();
    Do("key back");
    AwaitOutcome("Nobody has signed in.");

    ChoosePlace(Place());
    ReachLogInPage();
    Touch(kDenyButton);
    expectGivenUp();

    ChoosePlace(Place());
    ReachLogInPage();
    if (IsTwitter()) {
        Type("me");
        Touch(kPasswordField);
        Type("hunter");
    } else {
        TypeOnScreen("me");
        Touch(kPasswordField);
        Do("wait 500");  // until what is typed goes there
        TypeOnScreen("hunter");
    }
    Touch(kAllowButton);
    SendMessage(kGreeting);
    AwaitOutcome("Your picture has been shared.");
    ExpectUpload(0, std::string(kGreeting) + Place().hashtag);

    const std::size_t asked = Received(Place().signInService, Place().firstPath).size();
    ChoosePlace(Place());
    SendMessage("");
    AwaitOutcome("Your picture has been shared.");
    ExpectUpload(1, Place().hashtag);
    ExpectNoSecretIsSeen();
    Finish();

    StartHeadless();
    OpenAlbum();
    ChoosePlace(Place());
    SendMessage("Again");
    AwaitOutcome("Your picture has been shared.");
    ExpectUpload(2, std::string("Again") + Place().hashtag);
    EXPECT_EQ(Received(Place().signInService, Place().firstPath).size(), asked);
    Finish();
    ExpectNothingIsLeft();
}

}  // namespace
}  // namespace Kivo
