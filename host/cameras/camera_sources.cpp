#include "host/cameras/camera_sources.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <optional>
#include <system_error>
#include <utility>

#include "backends/photos/photos_camera.h"
#include "backends/scene/scene_camera.h"
#include "host/cameras/camera_choice.h"
#include "osp/media/live/live_camera.h"

// `auto` looks for real cameras in one way after the other and stays with the first that has any:
// the same webcam would be found in two of them. Real cameras keep real time, so that under the
// virtual clock, where a run depends on its inputs alone, `auto` means the scene.

namespace Host {

using Osp::Media::CameraBackend;
using Osp::Media::CameraDevice;
using Osp::Media::CameraInfo;
using Osp::Media::CameraSelection;
using Osp::Media::CameraService;

namespace {

using Device = std::unique_ptr<CameraDevice>;
/// Of a source, which it also chooses.
enum class SourceKind { kAuto, kScene, kPhotos, kReal, kNone };

struct Source {
    std::string_view name;      // up to the argument
    std::string_view argument;  // what the user is to put after the name; empty: nothing
    bool isArgumentNeeded = false;
    SourceKind kind{};
    CameraWay way{};  // of kReal
};

/// In the order in which the user is told of them.
constexpr Source kSources[] = {
    {"auto", "", false, SourceKind::kAuto, {}},
    {"scene", "", false, SourceKind::kScene, {}},
    {"photos", ":DIR", true, SourceKind::kPhotos, {}},
    {"pipewire", ":ID", false, SourceKind::kReal, CameraWay::kPipewire},
    {"v4l2", ":PATH", true, SourceKind::kReal, CameraWay::kV4l2},
    {"libcamera", ":ID", false, SourceKind::kReal, CameraWay::kLibcamera},
    {"none", "", false, SourceKind::kNone, {}},
};

struct Request {
    const Source* source = nullptr;
    std::string argument;
};

std::optional<Request> Read(std::string_view text) {
    for (const Source& source : kSources) {
        if (!text.starts_with(source.name)) continue;
        const std::string_view rest = text.substr(source.name.size());
        if (rest.empty() && !source.isArgumentNeeded) return Request{&source, ""};
        if (!source.argument.empty() && rest.starts_with(':') && rest.size() > 1) {
            return Request{&source, std::string(rest.substr(1))};
        }
    }
    return std::nullopt;
}

/// Whether the kernel has anything that may be a camera; a module is loaded for less than nothing.
bool HasDeviceFiles() {
    std::error_code error;
    for (const auto& file : std::filesystem::directory_iterator("/dev", error)) {
        const std::string name = file.path().filename();
        if (name.starts_with("video") || name.starts_with("media")) return true;
    }
    return false;
}

/// Makes the devices of both places, which depend on each other where one is `auto`.
class CameraMaker {
  public:
    CameraMaker(bool isTimeReal, CameraModules& modules)
        : isTimeReal_(isTimeReal), modules_(modules) {}

    Outcome<Device> Make(const Request& request, CameraSelection selection, const Request& other);

  private:
    Outcome<Device> MakeAuto(CameraSelection selection, const Request& other);
    Outcome<Device> MakeReal(CameraWay way, const std::string& id, CameraSelection selection);
    void Look();

    bool isTimeReal_;
    CameraModules& modules_;
    std::optional<std::vector<CameraInfo>> found_;   // by the first `auto`
    CameraWay way_{};                                // in which they were found
    bool awaitsConsent_ = false;                     // there may be some later
    std::array<std::optional<std::string>, 2> ids_;  // of the real cameras that have been made
};

void CameraMaker::Look() {
    if (found_) return;
    found_.emplace();
    if (!isTimeReal_) return;
    for (const CameraWay way : kCameraWays) {
        if (way != CameraWay::kPipewire && !HasDeviceFiles()) return;
        const auto backend = modules_.Get(way);
        if (!backend) continue;
        way_ = way;
        const auto report = (*backend)->Look(false);
        found_ = report.cameras;
        awaitsConsent_ = report.awaitsConsent;
        if (!found_->empty() || awaitsConsent_) return;
    }
}

Outcome<Device> CameraMaker::MakeAuto(CameraSelection selection, const Request& other) {
    const bool isPrimary = selection == CameraSelection::kPrimary;
    std::optional<std::string> taken = ids_[isPrimary ? 1 : 0];
    if (!taken && other.source->kind == SourceKind::kReal) taken = other.argument;
    Look();
    if (taken && taken->empty() && !found_->empty()) taken = found_->front().id;
    const auto id = ChooseCamera(*found_, selection, taken);
    if (id) return MakeReal(way_, *id, selection);
    // Whichever camera the user's yes will bring.
    if (isPrimary && awaitsConsent_) return MakeReal(way_, "", selection);
    const bool isOtherReal = taken.has_value();
    if (!isPrimary && isOtherReal) return Device();
    return Device(std::make_unique<Osp::Media::SceneCamera>(selection));
}

Outcome<Device> CameraMaker::MakeReal(CameraWay way, const std::string& id,
                                      CameraSelection selection) {
    const auto backend = modules_.Get(way);
    if (!backend) return backend.Why();
    const std::string name = std::string(NameOf(way)) + (id.empty() ? std::string() : ":" + id);
    if (!found_ || way_ != way) (void)(*backend)->Look(false);  // it knows its cameras then
    auto device = std::make_unique<Osp::Media::LiveCamera>(name, selection, (*backend)->Open(id));
    if (!device->IsPresent()) {
        std::fprintf(stderr, "kivo-camera: the camera %s is not there yet\n", name.c_str());
    }
    ids_[static_cast<std::size_t>(selection)] = id;
    return Device(std::move(device));
}

Outcome<Device> CameraMaker::Make(const Request& request, CameraSelection selection,
                                  const Request& other) {
    switch (request.source->kind) {
        case SourceKind::kAuto:
            return MakeAuto(selection, other);
        case SourceKind::kScene:
            return Device(std::make_unique<Osp::Media::SceneCamera>(selection));
        case SourceKind::kPhotos: {
            std::string error;
            Device device = Osp::Media::PhotosCamera::Make(request.argument, selection, error);
            if (!device) return Failure{error};
            return device;
        }
        case SourceKind::kReal:
            return MakeReal(request.source->way, request.argument, selection);
        case SourceKind::kNone:
            break;
    }
    return Device();
}

Failure Unknown(std::string_view name) {
    return {"unknown camera source '" + std::string(name) + "': it is " + KnownSources()};
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
        const bool isOptional = !source.argument.empty() && !source.isArgumentNeeded;
        names.append(source.name).append(isOptional ? "[" : "");
        names.append(source.argument).append(isOptional ? "]" : "");
    }
    return names;
}

Outcome<> CheckSource(std::string_view source, bool isTimeReal) {
    const auto request = Read(source);
    if (!request) return Unknown(source);
    if (request->source->kind == SourceKind::kReal && !isTimeReal) {
        return Failure{"the camera source '" + std::string(source) +
                       "' keeps real time: give --clock real"};
    }
    return kDone;
}

Outcome<std::unique_ptr<CameraService>> MakeCameras(std::string_view primary,
                                                    std::string_view secondary, bool isTimeReal,
                                                    CameraModules& modules) {
    const auto back = Read(primary);
    if (!back) return Unknown(primary);
    const auto front = Read(secondary);
    if (!front) return Unknown(secondary);
    CameraMaker maker(isTimeReal, modules);
    Outcome<Device> backDevice = maker.Make(*back, CameraSelection::kPrimary, *front);
    if (!backDevice) return backDevice.Why();
    Outcome<Device> frontDevice = maker.Make(*front, CameraSelection::kSecondary, *back);
    if (!frontDevice) return frontDevice.Why();
    return std::make_unique<CameraService>(std::move(*backDevice), std::move(*frontDevice));
}

}  // namespace Host
