#include "host/camera_sources.h"

#include <iterator>
#include <utility>

#include "backends/photos/photos_camera.h"
#include "backends/scene/scene_camera.h"

namespace Host {

using Osp::Media::CameraDevice;
using Osp::Media::CameraSelection;
using Osp::Media::CameraService;

namespace {

using Device = std::unique_ptr<CameraDevice>;

Outcome<Device> MakeNone(const std::string&, CameraSelection) {
    return Device();
}

Outcome<Device> MakeScene(const std::string&, CameraSelection selection) {
    return Device(std::make_unique<Osp::Media::SceneCamera>(selection));
}

Outcome<Device> MakePhotos(const std::string& folder, CameraSelection selection) {
    std::string error;
    Device device = Osp::Media::PhotosCamera::Make(folder, selection, error);
    if (!device) return Failure{error};
    return device;
}

struct Source {
    std::string_view name;      // up to the argument
    std::string_view argument;  // what the user is to put after the name; empty: nothing
    /// A success without a device where the phone is to have no such camera.
    Outcome<Device> (*make)(const std::string& argument, CameraSelection selection);
};

/// In the order in which the user is told of them.
constexpr Source kSources[] = {
    {"auto", "", MakeScene},
    {"scene", "", MakeScene},
    {"photos:", "DIR", MakePhotos},
    {"none", "", MakeNone},
};

const Source* Find(std::string_view name) {
    for (const Source& source : kSources) {
        if (source.argument.empty() ? name == source.name : name.starts_with(source.name)) {
            return &source;
        }
    }
    return nullptr;
}

Failure Unknown(std::string_view name) {
    return {"unknown camera source '" + std::string(name) + "': it is " + KnownSources()};
}

Outcome<Device> MakeDevice(std::string_view name, CameraSelection selection) {
    const Source* const source = Find(name);
    if (source == nullptr) return Unknown(name);
    return source->make(std::string(name.substr(source->name.size())), selection);
}

}  // namespace

std::string KnownSources() {
    std::string names;
    for (const Source& source : kSources) {
        if (&source == std::prev(std::end(kSources))) {
            names += " or ";
        } else if (!names.empty()) {
            names += ", ";
        }
        names.append(source.name).append(source.argument);
    }
    return names;
}

Outcome<> CheckSource(std::string_view source) {
    if (Find(source) == nullptr) return Unknown(source);
    return kDone;
}

Outcome<std::unique_ptr<CameraService>> MakeCameras(std::string_view primary,
                                                    std::string_view secondary) {
    Outcome<Device> back = MakeDevice(primary, CameraSelection::kPrimary);
    if (!back) return back.Why();
    Outcome<Device> front = MakeDevice(secondary, CameraSelection::kSecondary);
    if (!front) return front.Why();
    return std::make_unique<CameraService>(std::move(*back), std::move(*front));
}

}  // namespace Host
