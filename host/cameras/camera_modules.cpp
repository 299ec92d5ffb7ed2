#include "host/cameras/camera_modules.h"

#include <string>

#include "host/modules/application_library.h"

namespace Host {

using Osp::Media::CameraBackend;

namespace {

struct Module {
    std::string_view name;
    const char* library;
};

constexpr std::array kModules = {
    Module{"pipewire", "libkivo-pipewire.so"},
    Module{"v4l2", "libkivo-gstreamer.so"},
    Module{"libcamera", "libkivo-gstreamer.so"},
};
static_assert(kModules.size() == kCameraWays.size());

const Module& ModuleOf(CameraWay way) {
    return kModules[static_cast<std::size_t>(way)];
}

}  // namespace

std::string_view NameOf(CameraWay way) {
    return ModuleOf(way).name;
}

Outcome<CameraBackend*> CameraModules::Get(CameraWay way) {
    std::unique_ptr<CameraBackend>& backend = backends_[static_cast<std::size_t>(way)];
    if (backend) return backend.get();
    const Module& module = ModuleOf(way);
    Outcome<void*> maker = LoadSymbol(PackageFolder() + "/lib/" + module.library,
                                      Osp::Media::kMakeCameraBackendSymbol);
    if (!maker) return maker.Why();
    backend.reset(reinterpret_cast<Osp::Media::MakeCameraBackendFunction>(*maker)(
        std::string(module.name).c_str()));
    if (!backend) return Failure{std::string(module.name) + " cannot be used here"};
    return backend.get();
}

}  // namespace Host
