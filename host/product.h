// What the program tells the platform of itself.
#pragma once

#include "cmake/product.h"
#include "osp/io/storage_map.h"

namespace Host {

inline const Osp::Io::ProductInfo kProduct{
    .name = Kivo::kProductName, .pictureFolderName = "KIVO", .privateFolderName = "kivo-camera"};

}  // namespace Host
