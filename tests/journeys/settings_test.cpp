// The settings, used with one finger, and what the next run still knows of them.
#include <filesystem>
#include <gtest/gtest.h>

#include "app/model/action_ids.h"
#include "osp/app/lifecycle.h"
#include "tests/support/choosing.h"
#include "tests/support/pictures/jpeg.h"

namespace Kivo {
namespace {

namespace fs = std::filesystem;
using namespace Testing;
using nlohmann::json;

constexpr Spot kResolutions[] = {{215, 92}, {215, 144}, {410, 92}, {410, 144}};
constexpr const char* kSizes[] = {"1600x960", "1280x960", "800x480", "640x480"};

using Registry = std::map<std::string, Osp::App::RegistryValue>;

class SettingsTest : public testing::Test {
  protected:
    void Begin(const Registry& registry = {}) {
        phone_ =
            std::make_unique<Phone>(PhoneSetup{.registry = registry, .dataFolder = folder_.Path()});
        phone_->Do("await preview");
        OpenSettings(*phone_);
    }
    void BeginAgain() {
        phone_.reset();
        Begin();
    }
    std::uint32_t PixelAt(int x, int y) {
        return phone_->On([x, y] {
            const auto& screen = Osp::Ui::Screen::Current().Compose();
            const auto* row = screen.Data() + std::ptrdiff_t{screen.StrideBytes()} * y;
            return reinterpret_cast<const std::uint32_t*>(row)[x] & 0xFFFFFF;
        });
    }
    bool IsOn(Spot toggle) {
        const std::uint32_t ground = PixelAt(toggle.x, toggle.y - 14);
        EXPECT_TRUE(ground == 0xFFB938 || ground == 0xFFFFFF) << std::hex << ground;
        return ground == 0xFFB938;
    }
    /// The number of the one resolution that looks chosen; -1 when it is not one.
    int Chosen() {
        int chosen = -1;
        int count = 0;
        for (int i = 0; i < 4; ++i) {
            const Spot place = kResolutions[i];
            if (PixelAt(place.x, place.y - 16) != 0xCF3A20) continue;
            chosen = i;
            ++count;
        }
        return count == 1 ? chosen : -1;
    }
    bool Has(const std::string& key) {
        return phone_->On(
            [key] { return Osp::App::Lifecycle::Current().GetSettings().Values().contains(key); });
    }
    /// What a run that ended without warning would leave.
    std::string Saved() { return Osp::Testing::ReadText(folder_ / "kivo-camera/registry.ini"); }

    Osp::Testing::TemporaryFolder folder_;
    std::unique_ptr<Phone> phone_;
};

TEST_F(SettingsTest, OfferTheSizesOfTheCameraAndPhotographWithTheChosenOne) {
    Begin();
    for (int i = 0; i < 6; ++i) {
        const json button = phone_->Button(kActionFirstResolution + i);
        EXPECT_EQ(button.is_null(), i >= 4) << i;
        if (i < 4) {
            EXPECT_EQ(button["text"], kSizes[i]);
        }
    }
    EXPECT_EQ(Chosen(), 1);
    phone_->Do(Tap(kResolutions[0]));
    EXPECT_EQ(Chosen(), 0);
    EXPECT_NE(Saved().find("CAPTURE_WIDTH=1600"), std::string::npos) << "a new key, at once";
    phone_->Do(Tap(kResolutions[2]));
    EXPECT_EQ(Chosen(), 2);
    EXPECT_NE(Saved().find("CAPTURE_WIDTH=1600"), std::string::npos) << "a known one, at the end";
    LeaveForm(*phone_);
    phone_->Do({"key camera", "await photos 1"});
    EXPECT_EQ(phone_->PhotoList()[0]["width"], 800);
    EXPECT_EQ(phone_->PhotoList()[0]["height"], 480);
    BeginAgain();
    EXPECT_EQ(Chosen(), 2);
}

TEST_F(SettingsTest, LeaveTheFrontCameraItsSize) {
    Begin();
    LeaveForm(*phone_);
    phone_->Do({Tap(kSwapButton), "wait 500", "await preview", "wait 200"});
    OpenSettings(*phone_);
    EXPECT_EQ(Chosen(), 3);
    phone_->Do(Tap(kResolutions[0]));
    EXPECT_EQ(Chosen(), 3);
    EXPECT_FALSE(Has("CAPTURE_WIDTH"));
}

TEST_F(SettingsTest, SwitchBothSoundsTogether) {
    Begin({{"SHUTTER_SOUND", 0}});
    EXPECT_FALSE(IsOn(kSoundToggle)) << "one of them is off, whatever the key holds";
    phone_->Do(Tap(kSoundToggle));
    EXPECT_TRUE(IsOn(kSoundToggle));
    EXPECT_FALSE(Has("SHUTTER_SOUND"));
    EXPECT_NE(Saved().find("SHUTTER_SOUND"), std::string::npos) << "removed, but not saved yet";
    phone_->Do(Tap(kSoundToggle));
    EXPECT_FALSE(IsOn(kSoundToggle));
    EXPECT_NE(Saved().find("EFFECT_SOUND=1"), std::string::npos);
    LeaveForm(*phone_);
    phone_->Do({"key camera", "await photos 1"});
    EXPECT_TRUE(phone_->Sounds().empty());
    BeginAgain();
    EXPECT_FALSE(IsOn(kSoundToggle));
}

TEST_F(SettingsTest, AskForACardThatIsNotThere) {
    Begin();
    phone_->Do({Tap(kMemoryToggle), "wait 2900", "expect text Please insert MicroSD card.",
                Tap(kSoundToggle), "wait 200"});
    EXPECT_TRUE(phone_->Try("expect text Please insert"));
    EXPECT_FALSE(IsOn(kMemoryToggle));
    EXPECT_TRUE(IsOn(kSoundToggle)) << "the box takes every tap";
    EXPECT_FALSE(Has("EXT_MEMORY"));
    phone_->Do({Tap(kMemoryToggle), "wait 100", "background", "wait 100", "foreground"});
    EXPECT_TRUE(phone_->Try("expect text Please insert"));
    LeaveForm(*phone_);
}

TEST_F(SettingsTest, FollowACardThatComesAndGoes) {
    Begin();
    fs::create_directory(folder_ / "Storagecard");
    phone_->Do(Tap(kMemoryToggle));
    EXPECT_TRUE(IsOn(kMemoryToggle));
    EXPECT_NE(Saved().find("EXT_MEMORY=1"), std::string::npos);
    fs::rename(folder_ / "Storagecard", folder_ / "pulled");
    phone_->Wait(1000);
    EXPECT_FALSE(IsOn(kMemoryToggle));
    LeaveForm(*phone_);
    phone_->Do({"key camera", "await photos 1"});
    EXPECT_EQ(phone_->Photos().size(), 1u) << "not lost but in the phone";
    OpenSettings(*phone_);
    fs::rename(folder_ / "pulled", folder_ / "Storagecard");
    phone_->Wait(1000);
    EXPECT_TRUE(IsOn(kMemoryToggle));
    LeaveForm(*phone_);
    phone_->Do({"key camera", "await photos 2"});
    EXPECT_TRUE(IsWholeJpeg(folder_ / "Storagecard/Media/Images/KIVO0000.jpg"));
    BeginAgain();
    EXPECT_TRUE(IsOn(kMemoryToggle));
    phone_->Do(Tap(kMemoryToggle));
    EXPECT_FALSE(IsOn(kMemoryToggle));
    EXPECT_FALSE(Has("EXT_MEMORY"));
}

TEST_F(SettingsTest, SignOutAndOpenTheSignInThatCanBeClosed) {
    Begin({{"TW_TOKEN", "a"}, {"TW_TOKEN_SECRET", "b"}, {"FB_TOKEN", "c"}});
    EXPECT_TRUE(IsOn(kTwitterToggle));
    EXPECT_TRUE(IsOn(kFacebookToggle));
    phone_->Do({Tap(kTwitterToggle), Tap(kFacebookToggle)});
    EXPECT_EQ(Saved().find("TOKEN"), std::string::npos) << "both of Twitter's, at once";
    for (const Spot toggle : {kTwitterToggle, kFacebookToggle}) {
        EXPECT_FALSE(IsOn(toggle));
        phone_->Do({Tap(toggle), "wait 100", "expect form SnsShareForm", "key soft1", "wait 50",
                    "expect form SettingForm"});
        EXPECT_FALSE(IsOn(toggle));
    }
    LeaveForm(*phone_);
    OpenSettings(*phone_);
    EXPECT_FALSE(IsOn(kTwitterToggle));
}

TEST_F(SettingsTest, OutliveTheBackground) {
    Begin();
    phone_->Do({Press(kSoundToggle), "background", "wait 1000", "foreground", Release(kSoundToggle),
                "wait 1000", "expect form SettingForm"});
    EXPECT_TRUE(IsOn(kSoundToggle)) << "the finger was taken away";
    phone_->Do({"unplug primary", "key back", "await form MainForm", "wait 500", "plug primary",
                "wait 500", "key camera", "await photos 1"});
}

TEST_F(SettingsTest, AloneAreKnownToTheNextRun) {
    fs::create_directory(folder_ / "Storagecard");
    Begin();
    phone_->Do({Tap(kResolutions[3]), Tap(kSoundToggle), Tap(kMemoryToggle)});
    LeaveForm(*phone_);
    Choose(*phone_, CameraType::kQuad, PhotoEffect::kSepia);
    phone_->Do({Tap(kHdrButton), "wait 200", Tap(kWhiteBalanceButton), "wait 200"});
    phone_->On([] { CurrentSettings().SetZoomLevel(ZoomLevel::k2X); });
    BeginAgain();
    EXPECT_EQ(Chosen(), 3);
    EXPECT_FALSE(IsOn(kSoundToggle));
    EXPECT_TRUE(IsOn(kMemoryToggle));
    phone_->On([] {
        const CameraSetting& setting = CurrentSettings();
        EXPECT_EQ(setting.GetCameraType(), CameraType::kQuad);
        EXPECT_EQ(setting.GetPhotoEffect(), PhotoEffect::kNormal);
        EXPECT_EQ(setting.GetZoomLevel(), ZoomLevel::k1X);
        EXPECT_EQ(setting.GetWhiteBalance(), Osp::Media::CameraWhiteBalance::kAuto);
        EXPECT_EQ(setting.GetFlashState(), FlashState::kOff);
        EXPECT_EQ(setting.GetCameraSelection(), Osp::Media::CameraSelection::kPrimary);
        EXPECT_FALSE(setting.IsHdrEnabled());
    });
}

}  // namespace
}  // namespace Kivo
