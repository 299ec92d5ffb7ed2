// Random scripts, with a finger that stays down across whatever happens.
#pragma once

#include <deque>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "tests/support/camera_screen.h"

namespace Kivo::Testing {

/// What has to be known of the phone for a command to be one that it obeys.
struct Known {
    bool isForeground = true;
    bool isPlugged[2] = {true, true};
};

inline constexpr const char* kCameras[] = {"primary", "secondary"};

/// Whether the phone obeys `command`; if so, `known` follows it.
inline bool Follow(const std::string& command, Known& known) {
    for (int i = 0; i < 2; ++i) {
        const bool isPlug = command == std::string("plug ") + kCameras[i];
        const bool isUnplug = command == std::string("unplug ") + kCameras[i];
        if ((isPlug || isUnplug) && known.isPlugged[i] == isPlug) return false;
        if (isPlug || isUnplug) known.isPlugged[i] = isPlug;
    }
    if (command == "background") known.isForeground = false;
    if (command == "foreground") known.isForeground = true;
    return true;
}

/// Somebody who plays with the camera without looking.
class Monkey {
  public:
    static constexpr int kCommands = 60;

    explicit Monkey(unsigned seed) : random_(seed) {}

    /// Begins with a camera that previews, and ends anywhere.
    std::vector<std::string> WriteScript() {
        std::vector<std::string> script{"wait 100"};
        if (Below(3) == 0) script.insert(script.end(), {Tap(kSwapButton), "wait 500"});
        Known known;
        for (int i = 0; i < kCommands; ++i) {
            std::string command = Next(known);
            while (!Follow(command, known)) command = Next(known);
            isPressed_ =
                command.starts_with("press") || (isPressed_ && command.starts_with("move"));
            script.push_back(command);
        }
        return script;
    }

  private:
    int Below(unsigned n) { return static_cast<int>(random_() % n); }

    std::string Next(const Known& known) {
        const int dice = Below(100);
        if (!plan_.empty()) return NextOfPlan();
        if (!known.isForeground && dice < 15) return "foreground";
        if (isPressed_ && Below(2) == 0) return Change();
        if (dice < 20) return "press " + Place();
        if (dice < 30) return "move " + Place();
        if (dice < 40) return "release " + Place();
        if (dice < 58) return "tap " + Place();
        if (dice < 62) return "drag " + Place() + " " + Place() + " " + Number(1 + Below(12));
        if (dice < 66) return BeginDrag();
        if (dice < 67) return Key();
        if (dice < 75) return VisitForm();
        return dice < 83 ? Wait() : Change();
    }

    // Of a control that has to be pulled out first; somebody else ends it, or nobody.
    std::string BeginDrag() {
        const bool isZoom = Below(2) == 0;
        const std::string by = Number(Below(300));
        plan_ = isZoom ? Plan{"wait 200", "press 700 40", "move " + by + " 40"}
                       : Plan{"wait 200", "press 60 230", "move 60 " + by};
        return Tap(isZoom ? kZoomBar : kEffectRoll);
    }

    // Plays there for a while and leaves it, or is left there by something in between.
    std::string VisitForm() {
        struct Form {
            Spot button;
            std::string (Monkey::*play)();
        };
        static constexpr Form kForms[] = {{kCameraTypeButton, &Monkey::InChooser},
                                          {kSettingsButton, &Monkey::InSettings},
                                          {kAlbumButton, &Monkey::InAlbum}};
        const Form& form = kForms[Below(std::size(kForms))];
        plan_ = {"wait " + Number(Below(200))};
        for (int i = Below(8); i > 0; --i) {
            plan_.push_back((this->*form.play)());
            plan_.push_back("wait " + Number(Below(160)));
        }
        if (Below(3) == 0) plan_.push_back(Change());
        if (Below(3) > 0) plan_.push_back(Below(2) == 0 ? Tap(kReturnButton) : "key back");
        return Tap(form.button);
    }

    std::string InChooser() {
        const std::string y = Number(Below(2) == 0 ? 200 : 400);
        const int dice = Below(10);
        if (dice == 0) return Tap(Below(2) == 0 ? kCameraBefore : kCameraAfter);
        if (dice < 3) return "press " + Number(Below(800)) + " " + y;
        if (dice < 5) return "move " + Number(Below(800)) + " " + y;
        return "drag 400 " + y + " " + Number(Below(800)) + " " + y;
    }

    std::string InSettings() {
        static constexpr Spot kPlaces[] = {kSoundToggle,   kMemoryToggle, kFacebookToggle,
                                           kTwitterToggle, {215, 92},     {410, 144}};
        return Below(4) == 0 ? Key() : Tap(kPlaces[Below(std::size(kPlaces))]);
    }

    // But for e-mail, which starts a program of the machine's.
    std::string InAlbum() {
        static constexpr Spot kPlaces[] = {kPhoto,      kShareButton, kTrashButton, kWallButton,
                                           kTwitterRow, kFacebookRow, kCancelRow,   kDeleteButton,
                                           kKeepButton, kTrashButton};
        const int dice = Below(10);
        if (dice < 2) return Below(2) == 0 ? "drag 500 200 440 200" : "drag 440 200 500 200";
        if (dice < 3) return Below(2) == 0 ? "key left" : "key right";
        if (dice < 4) return Key();
        const char* const gesture = dice < 8 ? "tap" : dice < 9 ? "press" : "release";
        return Line(gesture, kPlaces[Below(std::size(kPlaces))]);
    }

    std::string Key() {
        static constexpr const char* kNames[] = {"back", "soft0", "soft1", "tab",
                                                 "tab",  "tab",   "enter"};
        return std::string("key ") + kNames[Below(std::size(kNames))];
    }

    std::string NextOfPlan() {
        const std::string command = plan_.front();
        plan_.pop_front();
        return command;
    }

    // What a finger that is down does not bring about.
    std::string Change() {
        const int dice = Below(100);
        if (dice < 40) return "key camera";
        if (dice < 65) return "background";
        return (dice < 85 ? "unplug " : "plug ") + std::string(kCameras[Below(2)]);
    }

    std::string Wait() {
        const int dice = Below(20);
        return "wait " + Number(dice < 11 ? Below(60) : dice < 18 ? Below(900) : Below(3500));
    }

    // Mostly where something is.
    std::string Place() {
        static constexpr Spot kPlaces[] = {
            kShutterButton, kShutterButton, kSwapButton, kFlashButton, kWhiteBalanceButton,
            kHdrButton,     kHelpButton,    kZoomBar,    kEffectRoll,  kCloseHelpButton,
            {190, 44},      {300, 60},      {400, 240}};
        const Spot place = kPlaces[Below(std::size(kPlaces))];
        const bool anywhere = Below(5) == 0;
        const int x = anywhere ? Below(900) - 50 : place.x + Below(40) - 20;
        const int y = anywhere ? Below(580) - 50 : place.y + Below(20) - 10;
        return Number(x) + " " + Number(y);
    }

    static std::string Number(int value) { return std::to_string(value); }

    using Plan = std::deque<std::string>;

    std::mt19937 random_;
    Plan plan_;
    bool isPressed_ = false;
};

}  // namespace Kivo::Testing
