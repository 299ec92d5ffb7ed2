// The album, used with one finger, and what other programs do to its photographs meanwhile.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>

#include "app/model/action_ids.h"
#include "osp/ui/screen.h"
#include "tests/support/choosing.h"
#include "tests/support/pictures/jpeg.h"

namespace Kivo {
namespace {

namespace fs = std::filesystem;
using namespace Testing;
using nlohmann::json;
using Osp::Testing::ReadText;
using Osp::Testing::WriteText;

constexpr Spot kNoticeButton{400, 290};

class AlbumTest : public testing::Test {
  protected:
    void Begin(const std::map<std::string, Osp::App::RegistryValue>& registry = {}) {
        phone_ =
            std::make_unique<Phone>(PhoneSetup{.registry = registry, .dataFolder = folder_.Path()});
        phone_->Do("await preview");
    }
    void Photograph(int count) {
        for (int i = 1; i <= count; ++i) {
            phone_->Do({"wait 300", "key camera", "await photos " + std::to_string(i)});
        }
        phone_->Wait(500);
    }
    void Open() { phone_->Do({Tap(kAlbumButton), "await form AlbumForm", "wait 50"}); }
    void Swipe(bool forward) {
        phone_->Do({forward ? "drag 500 200 489 200" : "drag 489 200 500 200", "wait 150"});
    }
    /// "NAME, 2 / 3" and what else is to be seen.
    std::string Seen() {
        const json screen = phone_->Screen();
        return screen["controls"].back()["text"];
    }
    /// The lowest of the three colours on the screen.
    int BrightnessAt(Spot spot) {
        return phone_->On([spot] {
            const auto& screen = Osp::Ui::Screen::Current().Compose();
            const auto* const pixel = screen.Data() + spot.y * screen.StrideBytes() + spot.x * 4;
            return std::min({int{pixel[0]}, int{pixel[1]}, int{pixel[2]}});
        });
    }
    std::string PathOf(int number) const { return Images() + "/" + Name(number); }
    std::string Images() const { return folder_ / "Media/Images"; }
    static std::string Name(int number) { return "KIVO000" + std::to_string(number) + ".jpg"; }
    void Put(int number, const std::string& bytes) {
        fs::create_directories(Images());
        WriteText(PathOf(number), bytes);
    }
    static std::string Jpeg(int width, int height) {
        return EncodeJpeg(RandomPicture(width, height, Look::kNoise, 1));
    }

    Osp::Testing::TemporaryFolder folder_;
    std::unique_ptr<Phone> phone_;
};

TEST_F(AlbumTest, TurnsOverTellsDeletesAndGoesBackToTheCamera) {
    Begin();
    Open();
    EXPECT_EQ(Seen(), "No photos yet");
    phone_->Do({Tap(kShareButton), Tap(kTrashButton), Tap(kPhoto)});
    EXPECT_EQ(Seen(), "No photos yet");
    LeaveForm(*phone_);
    Photograph(3);
    Open();
    EXPECT_EQ(Seen(), "KIVO0002.jpg, 3 / 3");
    phone_->Do({Tap(kPhoto), Tap(kShareButton), "wait 50", "key back"});
    EXPECT_EQ(Seen(), "KIVO0002.jpg, 3 / 3") << "a sheet takes the information away";
    (void)phone_->Sounds();
    Swipe(true);
    EXPECT_TRUE(phone_->Sounds().empty()) << "the newest is the last";
    phone_->Do({"drag 500 200 490 200", "wait 200"});
    EXPECT_EQ(Seen(), "KIVO0002.jpg, 3 / 3") << "neither a tap nor a swipe";
    phone_->Do(Tap(kPhoto));
    EXPECT_EQ(Seen(), "KIVO0002.jpg, 3 / 3, KIVO (Normal), 1X 1280 x 960, 01/01/2026 12:00");
    phone_->Do({"key left", "wait 20"});
    EXPECT_EQ(Seen(), "KIVO0002.jpg, 3 / 3") << "without the information";
    phone_->Wait(150);
    EXPECT_EQ(phone_->Sounds(), std::vector<std::string>{"/Res/snd_change_album.wav"});
    EXPECT_EQ(Seen(), "KIVO0001.jpg, 2 / 3");
    phone_->Do({"key left", "wait 150", "key left", "wait 150"});
    EXPECT_EQ(Seen(), "KIVO0000.jpg, 1 / 3");
    phone_->Do({"key right", "wait 150", Tap(kTrashButton), "wait 50", "key left", "wait 150",
                "expect text Delete this picture", "expect text KIVO0001.jpg", Tap(kDeleteButton)});
    EXPECT_EQ(Seen(), "KIVO0002.jpg, 2 / 2");
    EXPECT_EQ(phone_->Photos(), (std::vector{PathOf(0), PathOf(2)}));
    EXPECT_EQ(phone_->PhotoList().size(), 2u);
    phone_->Do({"key left", "wait 20", Press(kTrashButton), "wait 150", Release(kTrashButton)});
    EXPECT_EQ(Seen(), "KIVO0000.jpg, 1 / 2") << "no press counts that comes during a slide";
    EXPECT_TRUE(phone_->Button(kActionDelete).is_null()) << "nor opens its sheet";
    phone_->Do({"key tab", "key tab", "key tab", "key tab", "key enter", "expect text Delete",
                "key back"});
    LeaveForm(*phone_);
    phone_->Do({"key camera", "await photos 3", "wait 500"});
    Open();
    EXPECT_EQ(Seen(), "KIVO0003.jpg, 3 / 3");
}

TEST_F(AlbumTest, ShowsWhatIsNoPhotographAsBroken) {
    std::string small = EncodeJpeg(RandomPicture(64, 64, Look::kGradient, 1));
    small.resize(3071);  // whole; what follows a picture does no harm
    Put(0, small);
    Put(1, std::string(4000, 'x'));
    Put(2, Jpeg(400, 300).substr(0, 20000));
    Put(3, JpegClaiming(Jpeg(400, 300), 60000, 60000));
    fs::create_directory(PathOf(4));
    WriteText(Images() + "/KIVO12.jpg", Jpeg(400, 300));
    fs::create_symlink("/nowhere", PathOf(5));
    Put(6, Jpeg(400, 300));
    WriteText(folder_ / "elsewhere.jpg", Jpeg(300, 400));
    fs::create_symlink(folder_ / "elsewhere.jpg", PathOf(7));
    Begin();
    Open();
    EXPECT_EQ(Seen(), "KIVO0007.jpg, 8 / 8");
    phone_->Do(Tap(kPhoto));
    EXPECT_NE(Seen().find("KIVO0007.jpg, 300 x 400"), std::string::npos) << Seen();
    phone_->Do({Tap(kTrashButton), "wait 50", Tap(kDeleteButton), "wait 50"});
    EXPECT_TRUE(fs::exists(folder_ / "elsewhere.jpg")) << "only the link is deleted";
    EXPECT_EQ(Seen(), "KIVO0006.jpg, 7 / 7");
    for (int number = 5; number >= 0; --number) {
        Swipe(false);
        EXPECT_EQ(Seen(), Name(number) + ", " + std::to_string(number + 1) + " / 7, BROKEN");
        EXPECT_FALSE(phone_->IsEnabled(kActionOpenShare));
        EXPECT_TRUE(phone_->IsEnabled(kActionOpenDelete));
        phone_->Do(Tap(kPhoto));
        EXPECT_TRUE(Seen().ends_with("BROKEN"));
    }
    small.resize(3072);
    Put(0, small);
    Swipe(true);
    Swipe(false);
    EXPECT_EQ(Seen(), "KIVO0000.jpg, 1 / 7") << "large enough";
    for (int i = 0; i < 4; ++i) Swipe(true);
    phone_->Do({Tap(kTrashButton), "wait 50", Tap(kDeleteButton), "wait 50",
                "expect text could not be deleted", Tap(kNoticeButton), "wait 50"});
    EXPECT_EQ(Seen(), "KIVO0004.jpg, 5 / 7, BROKEN") << "a folder is not deleted";
    EXPECT_TRUE(fs::is_directory(PathOf(4)));
    LeaveForm(*phone_);
}

TEST_F(AlbumTest, ShowsPhotographsThatOthersChangeOrTakeAway) {
    Put(0, Jpeg(400, 300));
    Put(1, Jpeg(400, 300));
    Put(2, Jpeg(400, 300));
    Begin();
    Open();
    phone_->Wait(200);
    const std::string white = EncodeJpeg(Picture(480, 640, 0xFF));
    Put(1, white);
    fs::remove(PathOf(0));
    Swipe(false);
    EXPECT_GT(BrightnessAt(kPhoto), 250) << "not what was decoded ahead";
    phone_->Do(Tap(kPhoto));
    EXPECT_NE(Seen().find("480 x 640"), std::string::npos) << Seen();
    Swipe(false);
    EXPECT_EQ(Seen(), "KIVO0000.jpg, 1 / 3, BROKEN");
    phone_->Do({Tap(kTrashButton), "wait 50", Tap(kDeleteButton), "wait 50"});
    EXPECT_EQ(Seen(), "KIVO0001.jpg, 1 / 2") << "it is gone, as was wanted";
    phone_->Do({Press(kPhoto), "background", "wait 100", "foreground", Release(kPhoto), "wait 50"});
    EXPECT_EQ(Seen(), "KIVO0001.jpg, 1 / 2");
    LeaveForm(*phone_);
}

TEST_F(AlbumTest, AsksToSignInAndForAMessageBeforeItShares) {
    Put(0, Jpeg(400, 300));
    Begin();
    Open();
    phone_->Do({Tap(kShareButton), "wait 50", Tap(kTwitterRow), "wait 50",
                "expect form SnsShareForm", "key soft1", "wait 50", "expect form AlbumForm",
                "expect text Nobody has signed in.", "key back"});
    EXPECT_TRUE(phone_->Button(kActionCancelShare).is_null()) << "nothing is being sent";
    LeaveForm(*phone_);
    phone_.reset();
    Begin({{"TW_TOKEN", "a"}});
    Open();
    for (const int action : {kActionMessageCancelled, kActionMessageDone}) {
        phone_->Do({Tap(kShareButton), "wait 50", Tap(kTwitterRow), "wait 50", "text Hello"});
        const json bounds = phone_->Button(action)["bounds"];
        phone_->Do(Tap({bounds[0].get<int>() + 20, bounds[1].get<int>() + 20}));
        EXPECT_TRUE(phone_->Button(kActionMessageDone).is_null());
    }
    phone_->Do("await text The picture was not shared.");
    EXPECT_TRUE(phone_->Button(kActionCancelShare).is_null()) << "nothing is being sent";
}

TEST_F(AlbumTest, GoesBackFromTheMessageToThePhotograph) {
    Put(0, Jpeg(400, 300));
    Begin({{"TW_TOKEN", "a"}});
    Open();
    phone_->Do({Tap(kShareButton), "wait 50", Tap(kTwitterRow), "wait 50", "text Hello", "key back",
                "wait 50"});
    EXPECT_TRUE(phone_->Button(kActionMessageDone).is_null());
    LeaveForm(*phone_);
}

class MailTest : public AlbumTest {
  protected:
    void SetUp() override {
        Put(0, Jpeg(400, 300));
        fs::create_directory(folder_ / "bin");
    }
    void TearDown() override { setenv("PATH", path_.c_str(), 1); }
    /// The script's arguments are `$@`.
    void Install(const std::string& script) {
        WriteText(folder_ / "bin/xdg-email", "#!/bin/sh\n" + script + "\n");
        fs::permissions(folder_ / "bin/xdg-email", fs::perms::owner_all);
        setenv("PATH", (folder_ / "bin:/usr/bin:/bin").c_str(), 1);
    }
    void Send() {
        Begin();
        Open();
        phone_->Do({Tap(kShareButton), "wait 50", Tap(kMailRow), "wait 200"});
    }

    const std::string path_ = std::getenv("PATH");
};

TEST_F(MailTest, HandsThePhotographOverAndIsReadyAgain) {
    Install("printf '%s\\n' \"$@\" > " + (folder_ / "said"));
    Send();
    EXPECT_EQ(ReadText(folder_ / "said"), "--subject\n\n--attach\n" + PathOf(0) + "\n");
    phone_->Do({Tap(kPhoto), "wait 50"});
    EXPECT_NE(Seen().find("400 x 300"), std::string::npos) << "not busy any more";
}

TEST_F(MailTest, SaysWhenItFails) {
    Install("exit 3");
    Send();
    phone_->Do({"expect text could not be started", Tap(kNoticeButton), Tap(kPhoto), "wait 50"});
    EXPECT_NE(Seen().find("400 x 300"), std::string::npos) << Seen();
}

TEST_F(MailTest, IsReadyAgainWhenThePhotographIsGone) {
    Install("exit 0");
    Begin();
    Open();
    fs::remove(PathOf(0));
    phone_->Do({Tap(kShareButton), "wait 50", Tap(kMailRow), "wait 200", Tap(kTrashButton),
                "expect text Delete this picture"});
}

TEST_F(MailTest, SaysWhenThereIsNone) {
    setenv("PATH", (folder_ / "bin").c_str(), 1);
    Send();
    phone_->Do(
        {"expect text There is no e-mail program", Tap(kNoticeButton), Tap(kPhoto), "wait 50"});
    EXPECT_NE(Seen().find("400 x 300"), std::string::npos) << Seen();
}

}  // namespace
}  // namespace Kivo
