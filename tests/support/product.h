// The product whose platform the platform's own tests run.
#pragma once

#include "osp/io/storage_map.h"

namespace Osp::Testing {

inline const Io::ProductInfo kProduct{
    .name = "Test Camera", .pictureFolderName = "Shots", .privateFolderName = "test-camera"};

}  // namespace Osp::Testing
