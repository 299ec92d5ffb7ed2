#include "host/cameras/camera_choice.h"

#include <algorithm>
#include <array>

namespace Host {

using Osp::Media::CameraFacing;
using Osp::Media::CameraInfo;
using Osp::Media::CameraSelection;

namespace {

using Preference = std::array<CameraFacing, 3>;

constexpr Preference kForPrimary = {CameraFacing::kBack, CameraFacing::kUnknown,
                                    CameraFacing::kFront};
constexpr Preference kForSecondary = {CameraFacing::kFront, CameraFacing::kUnknown,
                                      CameraFacing::kBack};

}  // namespace

std::optional<std::string> ChooseCamera(std::span<const CameraInfo> found,
                                        CameraSelection selection,
                                        const std::optional<std::string>& taken) {
    const Preference& preference =
        selection == CameraSelection::kPrimary ? kForPrimary : kForSecondary;
    for (const CameraFacing facing : preference) {
        const auto match = std::ranges::find_if(found, [&](const CameraInfo& camera) {
            return camera.facing == facing && camera.id != taken;
        });
        if (match != found.end()) return match->id;
    }
    return std::nullopt;
}

}  // namespace Host
