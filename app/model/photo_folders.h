// Where photographs are stored, as the platform names the folders.
#pragma once

#include "app/model/camera_types.h"

namespace Kivo {

inline constexpr const char* kPhoneFolder = "/Media/Images";
inline constexpr const char* kCardFolder = "/Storagecard/Media/Images";

constexpr const char* FolderOf(StorageType storage) {
    return storage == StorageType::kMemoryCard ? kCardFolder : kPhoneFolder;
}

}  // namespace Kivo
