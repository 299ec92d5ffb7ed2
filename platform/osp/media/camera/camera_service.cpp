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
        if (!slot.Exists()) continue;
        slot.standIn = std::make_unique<DisconnectedCamera>(selection);
        slot.isConnected = slot.device->IsPresent();
        slot.device->WatchPresence([this, &slot](bool) { Update(slot); });
    }
}

int CameraService::Count() const {
    return static_cast<int>(std::ranges::count_if(slots_, &CameraSlot::Exists));
}

std::string CameraService::Id(CameraSelection selection) const {
    const CameraSlot& slot = slots_[static_cast<std::size_t>(selection)];
    return slot.Exists() ? slot.device->Id() : std::string();
}

result CameraService::SetUnplugged(CameraSelection selection, bool isUnplugged) {
    CameraSlot& slot = Slot(selection);
    if (!slot.Exists()) return result::kObjectNotFound;
    if (slot.isUnplugged == isUnplugged) return result::kInvalidState;
    slot.isUnplugged = isUnplugged;
    Update(slot);
    return result::kSuccess;
}

void CameraService::Update(CameraSlot& slot) {
    const bool isConnected = !slot.isUnplugged && slot.device->IsPresent();
    if (std::exchange(slot.isConnected, isConnected) == isConnected) return;
    if (slot.user != nullptr) slot.user->OnConnectionChanged();
}

void CameraService::SetForeground(bool isForeground) {
    isForeground_ = isForeground;
    for (CameraSlot& slot : slots_) {
        if (slot.Exists()) slot.device->SetLingers(isForeground);
    }
}

// Two cameras on one bus may not have enough of it for both.
void CameraService::OnPoweredOn(const CameraSlot& slot) {
    for (CameraSlot& other : slots_) {
        if (&other == &slot || !other.Exists()) continue;
        other.device->SetLingers(false);
        other.device->SetLingers(isForeground_);
    }
}

}  // namespace Osp::Media
