#include "osp/media/camera/camera_service.h"

#include <algorithm>
#include <string_view>

#include "backends/photos/photos_camera.h"
#include "backends/scene/scene_camera.h"
#include "osp/media/camera/disconnected_camera.h"

namespace Osp::Media {

namespace {

constexpr std::string_view kPhotosPrefix = "photos:";

bool MakeDevice(std::string_view source, CameraSelection selection,
                std::unique_ptr<CameraDevice>& device, std::string& error) {
    if (source == "none") return true;
    if (source == "scene" || source == "auto") {
        device = std::make_unique<SceneCamera>(selection);
        return true;
    }
    if (source.starts_with(kPhotosPrefix)) {
        const std::string folder(source.substr(kPhotosPrefix.size()));
        device = PhotosCamera::Make(folder, selection, error);
        return device != nullptr;
    }
    error = "unknown camera source '" + std::string(source) + "': it is " +
            CameraService::kKnownSources;
    return false;
}

}  // namespace

bool CameraService::IsKnownSource(std::string_view source) {
    return source == "none" || source == "scene" || source == "auto" ||
           source.starts_with(kPhotosPrefix);
}

std::unique_ptr<CameraService> CameraService::Make(const std::string& primary,
                                                   const std::string& secondary,
                                                   std::string& error) {
    std::unique_ptr<CameraService> service(new CameraService);
    const std::array sources = {&primary, &secondary};
    for (const auto selection : {CameraSelection::kPrimary, CameraSelection::kSecondary}) {
        CameraSlot& slot = service->Slot(selection);
        const std::string& source = *sources[static_cast<std::size_t>(selection)];
        if (!MakeDevice(source, selection, slot.device, error)) return nullptr;
        if (slot.Exists()) slot.standIn = std::make_unique<DisconnectedCamera>(selection);
    }
    return service;
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
