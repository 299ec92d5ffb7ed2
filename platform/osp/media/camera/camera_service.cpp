#include "osp/media/camera/camera_service.h"

#include <algorithm>
#include <utility>

#include "osp/media/camera/disconnected_camera.h"

namespace Osp::Media {

CameraService::CameraService(std::unique_ptr<CameraDevice> primary,
                             std::unique_ptr<CameraDevice> secondary) {
    Slot(CameraSelection::kPrimary).device = std::move(primary);
    Slot(CameraSelection::kSecondary).device = std::move(secondary);
    for (const auto selection : {CameraSelection::kPrimary, CameraSelection::kSecondary}) {
        CameraSlot& slot = Slot(selection);
        if (slot.Exists()) slot.standIn = std::make_unique<DisconnectedCamera>(selection);
    }
}

int CameraService::Count() const {
    return static_cast<int>(std::ranges::count_if(slots_, &CameraSlot::Exists));
}

std::string CameraService::Id(CameraSelection selection) const {
    const CameraSlot& slot = slots_[static_cast<std::size_t>(selection)];
    return slot.Exists() ? slot.device->Id() : std::string();
}

result CameraService::SetConnected(CameraSelection selection, bool isConnected) {
    CameraSlot& slot = Slot(selection);
    if (!slot.Exists()) return result::kObjectNotFound;
    if (slot.isConnected == isConnected) return result::kInvalidState;
    slot.isConnected = isConnected;
    if (slot.user != nullptr) slot.user->OnConnectionChanged();
    return result::kSuccess;
}

}  // namespace Osp::Media
