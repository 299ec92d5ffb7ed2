// Hardware keys.
#pragma once

namespace Osp::Ui {

/// On Linux the camera key is any of XF86Camera, XF86WebCam, Volume Up, Space and Enter.
enum class KeyCode {
    kNone = 0,
    kBack = 1,
    kSoftKey0 = 2,
    kSoftKey1 = 3,
    kCamera = 5,
    kLeft = 6,
    kRight = 7
};

}  // namespace Osp::Ui
