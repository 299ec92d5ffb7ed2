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
    bool isConnected = true;                // and present
    bool isUnplugged = false;               // by order, whatever the hardware says
    User* user = nullptr;                   // not owned; the camera that is powered on
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
    result Unplug(CameraSelection selection) { return SetUnplugged(selection, true); }
    result Plug(CameraSelection selection) { return SetUnplugged(selection, false); }

    /// What is powered on alone may keep its hardware, and nothing in the background.
    void SetForeground(bool isForeground);
    void OnPoweredOn(const CameraSlot& slot);

    CameraSlot& Slot(CameraSelection selection) {
        return slots_[static_cast<std::size_t>(selection)];
    }

  private:
    result SetUnplugged(CameraSelection selection, bool isUnplugged);
    void Update(CameraSlot& slot);

    std::array<CameraSlot, 2> slots_;
    bool isForeground_ = true;
};

}  // namespace Osp::Media
