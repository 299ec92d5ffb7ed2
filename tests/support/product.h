// The product whose platform the platform's own tests run, and its storage.
#pragma once

#include <string>

#include "osp/io/storage_map.h"

namespace Osp::Testing {

inline const Io::ProductInfo kProduct{
    .name = "Test Camera", .pictureFolderName = "Shots", .privateFolderName = "test-camera"};

inline Io::StorageMap::Options StorageIn(const std::string& dataFolder,
                                         const std::string& resourceFolder = "/nowhere") {
    return {.product = kProduct, .dataFolder = dataFolder, .resourceFolder = resourceFolder};
}

}  // namespace Osp::Testing
