#include "tests/ui/performance.h"

#include <algorithm>
#include <iterator>

#include "app/model/action_ids.h"
#include "app/model/camera_types.h"
#include "effects/composition.h"
#include "osp/media/camera/camera_service.h"
#include "osp/ui/access.h"
#include "osp/ui/screen.h"
#include "osp/ui/visible_controls.h"
#include "tests/support/camera_screen.h"
#include "tests/support/choosing.h"
#include "tests/support/main_form_access.h"
#include "tests/support/phone.h"
#include "tests/support/pictures/jpeg.h"
#include "tests/ui/monkey.h"

namespace Kivo::Testing {

using Osp::Media::CameraSelection;

namespace {

constexpr int kLongestSeriesS = 15;  // with a lost picture in it

/// What each control that is shown looks like, by its name.
using Looks = std::map<std::string, std::size_t>;

std::size_t Hash(std::string_view bytes) {
    return std::hash<std::string_view>()(bytes);
}

std::size_t Hash(const Osp::Graphics::Surface& picture, int height) {
    return Hash({reinterpret_cast<const char*>(picture.Data()),
                 std::size_t(picture.StrideBytes()) * std::size_t(height)});
}

std::size_t HashScreen() {
    return Hash(Osp::Ui::Screen::Current().Compose(), Osp::Ui::Screen::kSize.height);
}

Osp::Media::CameraSlot& Slot(CameraSelection selection) {
    return Osp::Media::CameraService::Current().Slot(selection);
}

bool IsAnyCameraOn() {
    return Slot(CameraSelection::kPrimary).user != nullptr ||
           Slot(CameraSelection::kSecondary).user != nullptr;
}

bool IsDisconnected() {
    return !Slot(CurrentSettings().GetCameraSelection()).isConnected;
}

Looks LookAtControls() {
    (void)Osp::Ui::Screen::Current().Compose();
    Looks looks;
    Osp::Ui::WalkScreen([&](const Osp::Ui::Control& control) {
        const auto& picture = Osp::Ui::Access::Picture(control);
        if (!picture) return;
        const Osp::Graphics::Rectangle area = control.GetScreenBounds();
        const int place = area.x + Osp::Ui::Screen::kSize.width * area.y;
        const std::string look = std::to_string(Hash(*picture, area.height)) + " at " +
                                 std::to_string(place) +
                                 (control.IsEnabled() ? " enabled" : " disabled");
        const std::string name = Osp::Ui::TextOf(control);
        looks[name.empty() ? "a cover" : name] = Hash(look);
    });
    return looks;
}

std::string FirstDifference(const Looks& a, const Looks& b) {
    std::vector<Looks::value_type> differences;
    std::ranges::set_symmetric_difference(a, b, std::back_inserter(differences));
    return differences.empty() ? "" : differences.front().first;
}

class Performance {
  public:
    Performance(int cameraType, const std::vector<std::string>& script)
        : phone_({.registry = {{"CAM_TYPE", std::to_string(cameraType)},
                               {"CAPTURE_WIDTH", 640},
                               {"CAPTURE_HEIGHT", 480}}}) {
        Do("await preview");
        help_ = LookAtHelp();
        for (const std::string& command : script) Do(command);
        PutInOrder();
        ExpectTrueControls();
        TakeAPhotograph();
        CollectFiles();
        // Of the faults the least: no photograph is lost by it.
        Complain(looksComplaint_);
    }

    const Outcome& GetOutcome() const { return outcome_; }

  private:
    void Complain(const std::string& reason) {
        if (outcome_.complaint.empty()) outcome_.complaint = reason;
    }

    void Do(const std::string& command) {
        if (!outcome_.complaint.empty()) return;
        outcome_.lines.push_back(command);
        const std::size_t before = phone_.Photos().size();
        const bool wasForeground = known_.isForeground;
        const bool wasDisconnected = phone_.On(IsDisconnected);
        (void)Follow(command, known_);
        if (!known_.isForeground && wasForeground) (void)phone_.Sounds();
        if (const auto error = phone_.Try(command)) return Complain(command + ": " + *error);
        if (phone_.HasEnded()) return Complain("the application has ended");
        outcome_.screens.push_back(phone_.On(HashScreen));
        const bool hasStored = phone_.Photos().size() > before;
        if (!known_.isForeground) WatchBackground(hasStored);
        if (hasStored && wasDisconnected && phone_.On(IsDisconnected)) {
            Complain("a photograph of a camera that is not there");
        }
    }

    void Do(std::initializer_list<std::string> commands) {
        for (const std::string& command : commands) Do(command);
    }

    void WatchBackground(bool hasStored) {
        if (hasStored) Complain("a photograph in the background");
        if (phone_.On(IsAnyCameraOn)) Complain("a camera is on in the background");
        if (!phone_.Sounds().empty()) Complain("a sound in the background");
    }

    bool IsCapturing() { return outcome_.complaint.empty() && !phone_.IsEnabled(kActionCapture); }

    bool IsOnOtherForm() {
        return outcome_.complaint.empty() && phone_.CurrentForm() != "MainForm";
    }

    void PutInOrder() {
        if (!known_.isForeground) Do("foreground");
        for (int i = 0; i < 2; ++i) {
            if (!known_.isPlugged[i]) Do(std::string("plug ") + kCameras[i]);
        }
        // A message box goes by itself.
        Do({"release 400 100", "wait 4000"});
        // A form may have a sheet open, or be busy.
        for (int i = 0; i < 4 && IsOnOtherForm(); ++i) Do({"key back", "wait 500"});
        Do("expect form MainForm");
        for (int i = 0; i < kLongestSeriesS && IsCapturing(); ++i) Do("wait 1000");
        const bool isHelpOpen =
            outcome_.complaint.empty() && !phone_.Button(kActionCloseHelp).is_null();
        if (isHelpOpen) Do(Tap(kCloseHelpButton));
        Do({"wait 500", "expect preview"});
    }

    /// A press that is taken back, and the help: both show what holds.
    void ExpectTrueControls() {
        const Looks now = Look();
        Do({Press(kHdrButton), "release 400 240", "wait 500"});
        Compare(Look(), now, "does not show what holds");
        Compare(LookAtHelp(), help_, "is another in the help");
    }

    void Compare(const Looks& a, const Looks& b, const std::string& reason) {
        const std::string name = FirstDifference(a, b);
        if (!name.empty() && looksComplaint_.empty()) looksComplaint_ = "'" + name + "' " + reason;
    }

    Looks Look() { return outcome_.complaint.empty() ? phone_.On(LookAtControls) : Looks(); }

    Looks LookAtHelp() {
        Do({Tap(kHelpButton), "wait 100"});
        Looks looks;
        for (const auto& [name, look] : Look()) {
            if (name == "a cover" || name == "Focus") looks[name] = look;
        }
        Do({Tap(kCloseHelpButton), "wait 500"});
        return looks;
    }

    /// With one press, by finger or key; of a double exposure that may be the first of two.
    void TakeAPhotograph() {
        if (!outcome_.complaint.empty()) return;
        const std::size_t before = phone_.Photos().size();
        const CameraType type = TypeOf(phone_);
        const bool isMix = type == CameraType::kMix;
        const std::string press =
            outcome_.lines.size() % 2 == 0 ? Tap(kShutterButton) : "key camera";
        (void)phone_.Sounds();
        for (int i = 0; i < (isMix ? 2 : 1) && phone_.Photos().size() == before; ++i) {
            Do(press);
            for (int j = 0; j < 7 && phone_.Photos().size() == before; ++j) Do("wait 1000");
        }
        if (phone_.Photos().size() == before) Complain("it takes no photograph any more");
        if (!isMix) ExpectShutterSounds(type);
        Do({"wait 1000", "expect preview"});
    }

    /// A series that was cut off does not go on in the next photograph.
    void ExpectShutterSounds(CameraType type) {
        const bool isOn = phone_.On([] { return CurrentSettings().IsShutterSoundEnabled(); });
        const int frames = isOn ? Effects::FramesPerPhotograph(type) : 0;
        const auto sounds = static_cast<int>(phone_.Sounds().size());
        if (sounds != frames) Complain(std::to_string(sounds) + " shutter sounds for a photograph");
    }

    void CollectFiles() {
        if (!outcome_.complaint.empty()) return;
        outcome_.files["photo list"] = Hash(phone_.PhotoList().dump());
        for (const std::string& path : phone_.Photos()) {
            if (!IsWholeJpeg(path)) Complain("not a whole photograph: " + path);
            outcome_.files[path.substr(phone_.DataFolder().size())] =
                Hash(Osp::Testing::ReadText(path));
        }
    }

    Outcome outcome_;
    Phone phone_;
    Known known_;
    Looks help_;  // when nothing has happened yet
    std::string looksComplaint_;
};

}  // namespace

Outcome Perform(int cameraType, const std::vector<std::string>& script) {
    return Performance(cameraType, script).GetOutcome();
}

}  // namespace Kivo::Testing
