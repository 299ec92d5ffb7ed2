#include "app/model/photo_description.h"

namespace Kivo {

std::string ComposePhotoDescription(CameraType type, PhotoEffect effect, ZoomLevel zoom, bool hdr) {
    std::string text(NameOf(type));
    text.append(" (").append(NameOf(effect)).append("),").append(LabelOf(zoom));
    if (hdr) text += ",HDR";
    return text;
}

}  // namespace Kivo
