// The device's cameras, as the host has chosen them.
#pragma once

#include <array>
#include <memory>
#include <string>

#include <osp/base/result.h>
#include <osp/media/camera_selection.h>

#include "osp/base/service.h"
#include "osp/media/camera/camera_device.h"

namespace Osp::Media {

/// Where one camera is mounted. Loop thread only.
struct CameraSlot {
    /// Told about the slot while it uses it.
    class User {
      public:
        virtual ~User() = default;
        virtual void OnConnectionChanged() = 0;
    };

    bool Exists() const { return device != nullptr; }
    CameraDevice& Current() { return isConnected ? *device : *standIn; }

    std::unique_ptr<CameraDevice> device;   // null where the phone has no such camera
    std::unique_ptr<CameraDevice> standIn;  // previews while the device is unplugged
    bool isConnected = true;
    User* user = nullptr;  // not owned; the camera that is powered on
};

/// Holds the devices for the life of the process. Loop thread only.
class CameraService : public Service<CameraService> {
  public:
    /// Null where the phone has no such camera.
    CameraService(std::unique_ptr<CameraDevice> primary, std::unique_ptr<CameraDevice> secondary);

    /// Cameras found; an unplugged one counts.
    int Count() const;
    /// Empty where there is no such camera.
    std::string Id(CameraSelection selection) const;

    /// kObjectNotFound where there is no such camera, kInvalidState when it is so already.
    result Unplug(CameraSelection selection) { return SetConnected(selection, false); }
    result Plug(CameraSelection selection) { return SetConnected(selection, true); }

    CameraSlot& Slot(CameraSelection selection) {
        return slots_[static_cast<std::size_t>(selection)];
    }

  private:
    result SetConnected(CameraSelection selection, bool isConnected);

    std::array<CameraSlot, 2> slots_;
};

}  // namespace Osp::Media
