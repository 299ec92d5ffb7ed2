// Choosing camera types and effects as a user does.
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "tests/support/camera_screen.h"
#include "tests/support/main_form_access.h"
#include "tests/support/phone.h"

namespace Kivo::Testing {

inline CameraType TypeOf(Phone& phone) {
    return phone.On([] { return CurrentSettings().GetCameraType(); });
}
inline PhotoEffect EffectOf(Phone& phone) {
    return phone.On([] { return CurrentSettings().GetPhotoEffect(); });
}

/// In the chooser: turns the cameras or the effects by `count` places, to what lies on the right.
inline void TurnCameras(Phone& phone, int count = 1) {
    for (int i = 0; i < count; ++i) {
        phone.Do({"press 500 200", "move 479 200", "release 479 200", "wait 100"});
    }
}
inline void TurnEffects(Phone& phone, int count = 1) {
    for (int i = 0; i < count; ++i) {
        phone.Do({"press 500 400", "move 489 400", "release 489 400", "wait 50"});
    }
}

inline void OpenChooser(Phone& phone) {
    phone.Do({Tap(kCameraTypeButton), "await form OptionForm"});
}
inline void OpenSettings(Phone& phone) {
    phone.Do({Tap(kSettingsButton), "await form SettingForm"});
}
inline void LeaveForm(Phone& phone) {
    phone.Do({Tap(kReturnButton), "await form MainForm", "wait 200", "await preview", "wait 200"});
}

/// From the camera screen and back to it. `effect` is one that `type` offers.
inline void Choose(Phone& phone, CameraType type, PhotoEffect effect) {
    const std::vector<int> offered = OffersAllEffects(type)
                                         ? std::vector{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}
                                         : std::vector{0, 3, 4, 5, 6, 7, 8};
    const auto place = [&offered](PhotoEffect e) {
        return static_cast<int>(std::ranges::find(offered, static_cast<int>(e)) - offered.begin());
    };
    OpenChooser(phone);
    TurnCameras(phone, (static_cast<int>(type) - static_cast<int>(TypeOf(phone)) + 6) % 6);
    const auto count = static_cast<int>(offered.size());
    TurnEffects(phone, (place(effect) - place(EffectOf(phone)) + count) % count);
    LeaveForm(phone);
}

}  // namespace Kivo::Testing
