#include "host/diagnose.h"

#include <cstdio>
#include <utility>

#include <osp/base/string.h>

#include "cmake/product.h"
#include "host/camera_sources.h"
#include "host/product.h"

namespace Host {

using Osp::Media::CameraSelection;

namespace {

constexpr std::pair<const char*, CameraSelection> kCameras[] = {
    {"primary", CameraSelection::kPrimary}, {"secondary", CameraSelection::kSecondary}};

}  // namespace

Outcome<std::unique_ptr<Diagnosis>> Diagnosis::Make(const Options& options,
                                                    const std::string& resourceFolder) {
    auto cameras = MakeCameras(options.primary, options.secondary);
    if (!cameras) return cameras.Why();
    return std::unique_ptr<Diagnosis>(new Diagnosis(options, resourceFolder, std::move(*cameras)));
}

Diagnosis::Diagnosis(const Options& options, const std::string& resourceFolder,
                     std::unique_ptr<Osp::Media::CameraService> cameras)
    : storage_({kProduct, options.dataFolder, resourceFolder}), cameras_(std::move(cameras)) {}

int Diagnosis::ListCameras() const {
    for (const auto& [name, selection] : kCameras) {
        const std::string id = cameras_->Id(selection);
        std::printf("%-12s %s\n", name, id.empty() ? "none" : id.c_str());
    }
    return 0;
}

int Diagnosis::Print(const std::string& packageFolder) {
    std::printf("%-12s %s\n%-12s %s\n", "version", Kivo::kVersion, "package",
                packageFolder.c_str());
    (void)ListCameras();
    for (const char* path : {"/Res", "/Media/Images", "/Storagecard"}) PrintFolder(path);
    std::printf("%-12s %s\n", "settings", storage_.GetPrivateFolder().c_str());
    return 0;
}

void Diagnosis::PrintFolder(const char* virtualPath) {
    std::string realPath = "not there";
    (void)storage_.Resolve(virtualPath, Osp::Io::Access::kRead, realPath);
    std::printf("%-12s %s\n", virtualPath, realPath.c_str());
}

}  // namespace Host
