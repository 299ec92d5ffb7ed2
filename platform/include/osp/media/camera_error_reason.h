// Why a running camera reports an error.
#pragma once

namespace Osp::Media {

enum class CameraErrorReason {
    kDisconnected = 1,   ///< unplugged; the preview goes on with a picture that says so
    kDeviceFailure = 2,  ///< the device stopped by itself
};

}  // namespace Osp::Media
