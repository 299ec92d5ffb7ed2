#include "diagnose.h"

#include <cstdio>
#include <utility>

#include <osp/base/string.h>

#include "io/storage_map.h"
#include "media/camera_service.h"
#include "version.h"

namespace Host {

using Osp::Media::CameraSelection;

namespace {

constexpr std::pair<const char*, CameraSelection> kCameras[] = {
    {"primary", CameraSelection::kPrimary}, {"secondary", CameraSelection::kSecondary}};

void PrintFolder(const char* virtualPath) {
    std::string realPath = "not there";
    (void)Osp::Io::StorageMap::Current().Resolve(virtualPath, Osp::Io::Access::kRead, realPath);
    std::printf("%-12s %s\n", virtualPath, realPath.c_str());
}

}  // namespace

int ListCameras() {
    for (const auto& [name, selection] : kCameras) {
        const std::string id = Osp::Media::CameraService::Current().Id(selection);
        std::printf("%-12s %s\n", name, id.empty() ? "none" : id.c_str());
    }
    return 0;
}

int Diagnose(const std::string& packageFolder) {
    std::printf("%-12s %s\n%-12s %s\n", "version", kVersion, "package", packageFolder.c_str());
    (void)ListCameras();
    for (const char* path : {"/Res", "/Media/Images", "/Storagecard"}) PrintFolder(path);
    return 0;
}

}  // namespace Host
