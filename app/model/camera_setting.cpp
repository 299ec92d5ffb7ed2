#include "app/model/camera_setting.h"

namespace Kivo {

using Osp::Graphics::Dimension;

CameraSetting::CameraSetting() {
    supportedResolutions_.reserve(5);
}

void CameraSetting::AddSupportResolution(Dimension resolution) {
    supportedResolutions_.push_back(resolution);
}

void CameraSetting::ResetSupportResolution() {
    supportedResolutions_.clear();
}

std::vector<Dimension>* CameraSetting::GetSupportResolutionListN() const {
    return new std::vector<Dimension>(supportedResolutions_);
}

Dimension CameraSetting::GetMaxSupportResolution() const {
    Dimension largest;
    for (const Dimension& entry : supportedResolutions_) {
        if (entry.width >= largest.width && entry.height >= largest.height) largest = entry;
    }
    return largest;
}

}  // namespace Kivo
