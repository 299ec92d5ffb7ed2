// What the program tells the platform of itself.
#pragma once

#include "osp/io/storage_map.h"

namespace Host {

inline const Osp::Io::ProductInfo kProduct{
    .name = "KIVO Camera", .pictureFolderName = "KIVO", .privateFolderName = "kivo-camera"};

}  // namespace Host
