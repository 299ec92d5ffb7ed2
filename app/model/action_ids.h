// Actions that the controls of the camera screen and of the forms report.
#pragma once

namespace Kivo {

enum ActionId : int {
    kActionCapture = 1000,
    kActionCameraType = 1001,
    kActionCameraSelection = 1002,
    kActionAlbum = 1003,
    kActionCloseHelp = 1004,
    kActionReturn = kActionCloseHelp,  ///< the same button, on a form
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
    kActionSound = 1024,
    kActionMemory = 1025,
    kActionFacebook = 1026,
    kActionTwitter = 1027,
    kActionEmail = 1006,  ///< of the album, as those up to kActionOpenWall
    kActionDelete = 1009,
    kActionKeep = 1010,
    kActionCancelShare = 1015,
    kActionShareTwitter = 1016,
    kActionShareFacebook = 1017,
    kActionMessageDone = 1020,
    kActionMessageCancelled = 1021,
    kActionClose = 1014,  ///< of the pages of the web
    kActionMoreOfWall = 1022,
    kActionOpenShare = 1030,
    kActionOpenDelete = 1031,
    kActionOpenWall = 1032,
    kActionShareOutcomeSeen = 1033,
    kActionFirstResolution = 1050,  ///< and the five that follow
};

}  // namespace Kivo
