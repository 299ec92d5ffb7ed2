// Where photographs are stored, as the platform names the folders.
#pragma once

#include "app/model/camera_setting.h"
#include "app/model/camera_types.h"

namespace Kivo {

inline constexpr const char* kPhoneFolder = "/Media/Images";
inline constexpr const char* kCardFolder = "/Storagecard/Media/Images";

constexpr const char* FolderOf(StorageType storage) {
    return storage == StorageType::kMemoryCard ? kCardFolder : kPhoneFolder;
}

/// Whether a memory card with its folder is in the phone at this moment.
bool IsCardThere();

/// Where a photograph goes at this moment. The user's choice of the card holds while the card is
/// away, but what is photographed meanwhile goes to the phone.
StorageType StorageInUse(const CameraSetting& setting);

}  // namespace Kivo
