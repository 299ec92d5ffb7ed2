// Actions that the controls of the camera screen report.
#pragma once

namespace Kivo {

enum ActionId : int {
    kActionCapture = 1000,
    kActionCameraType = 1001,
    kActionCameraSelection = 1002,
    kActionAlbum = 1003,
    kActionCloseHelp = 1004,
    kActionLogo = 1005,
    kActionFlash = 1007,
    kActionWhiteBalance = 1008,
    kActionZoom = 1011,
    kActionHdr = 1012,
    kActionInfo = 1013,
    kCameraSelectionVisibility =
        1015,  ///< stands for the camera-selection button in SetButtonVisible
    kActionZoomChanging = 1018,
    kActionEffectChanging = 1019,
    kActionSettings = 1023,
};

}  // namespace Kivo
