#include "host/cameras/diagnose.h"

#include <cstdio>
#include <nlohmann/json.hpp>
#include <utility>

#include <osp/base/string.h>

#include "cmake/product.h"
#include "host/cameras/camera_report.h"
#include "host/cameras/camera_sources.h"
#include "host/product.h"

namespace Host {

using nlohmann::json;
using Osp::Media::CameraSelection;

namespace {

constexpr std::pair<const char*, CameraSelection> kCameras[] = {
    {"primary", CameraSelection::kPrimary}, {"secondary", CameraSelection::kSecondary}};
constexpr const char* kFolders[] = {"/Res", "/Media/Images", "/Storagecard"};

void PrintRow(const char* name, const std::string& value) {
    std::printf("%-12s %s\n", name, value.c_str());
}

/// Ids and paths may be no UTF-8, which JSON has to be.
void PrintJson(const json& value) {
    std::printf("%s\n", value.dump(2, ' ', false, json::error_handler_t::replace).c_str());
}

}  // namespace

Outcome<std::unique_ptr<Diagnosis>> Diagnosis::Make(const Options& options,
                                                    const std::string& resourceFolder) {
    std::unique_ptr<Diagnosis> diagnosis(new Diagnosis(options, resourceFolder));
    auto cameras = MakeCameras(options.primary, options.secondary, true, diagnosis->modules_);
    if (!cameras) return cameras.Why();
    diagnosis->cameras_ = std::move(*cameras);
    return diagnosis;
}

Diagnosis::Diagnosis(const Options& options, const std::string& resourceFolder)
    : isJson_(options.isJson), storage_({kProduct, options.dataFolder, resourceFolder}) {}

std::string Diagnosis::IdOf(CameraSelection selection) const {
    const std::string id = cameras_->Id(selection);
    return id.empty() ? "none" : id;
}

int Diagnosis::ListCameras() {
    const auto reports = LookForCameras(modules_, Ways::kAll);
    if (isJson_) {
        PrintJson(CamerasAsJson(reports));
        return 0;
    }
    for (const auto& [name, selection] : kCameras) PrintRow(name, IdOf(selection));
    std::printf("\n%s", CamerasAsText(reports).c_str());
    return 0;
}

int Diagnosis::Print(const std::string& packageFolder) {
    if (isJson_) {
        PrintAsJson(packageFolder);
        return 0;
    }
    PrintRow("version", Kivo::kVersion);
    PrintRow("package", packageFolder);
    for (const auto& [name, selection] : kCameras) PrintRow(name, IdOf(selection));
    for (const char* path : kFolders) PrintRow(path, RealPath(path));
    PrintRow("settings", storage_.GetPrivateFolder());
    const auto reports = LookForCameras(modules_, Ways::kAll);
    std::printf("\n%s\n%s", WaysAsText(reports).c_str(), CamerasAsText(reports).c_str());
    return 0;
}

void Diagnosis::PrintAsJson(const std::string& packageFolder) {
    json report = {{"version", Kivo::kVersion},
                   {"package", packageFolder},
                   {"settings", storage_.GetPrivateFolder()}};
    for (const auto& [name, selection] : kCameras) report[name] = IdOf(selection);
    for (const char* path : kFolders) report["folders"][path] = RealPath(path);
    const auto reports = LookForCameras(modules_, Ways::kAll);
    report["backends"] = WaysAsJson(reports);
    report["cameras"] = CamerasAsJson(reports);
    PrintJson(report);
}

std::string Diagnosis::RealPath(const char* virtualPath) {
    std::string realPath = "not there";
    (void)storage_.Resolve(virtualPath, Osp::Io::Access::kRead, realPath);
    return realPath;
}

}  // namespace Host
