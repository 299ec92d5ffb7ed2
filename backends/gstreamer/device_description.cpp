#include "backends/gstreamer/device_description.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <initializer_list>
#include <string_view>

#include "backends/gstreamer/video_caps.h"
#include "backends/v4l2/video_files.h"

namespace Osp::Media {

namespace {

using StructureOwner = Base::Owner<GstStructure, gst_structure_free>;
using TextOwner = Base::Owner<gchar, g_free>;

/// Drivers of what works on pictures or feeds them to such: their devices look like cameras and
/// never deliver by themselves.
constexpr std::array<std::string_view, 2> kNoCameras = {"bcm2835-isp", "unicam"};

std::string Property(const GstStructure* properties, std::initializer_list<const char*> keys) {
    for (const char* key : keys) {
        const char* const value =
            properties == nullptr ? nullptr : gst_structure_get_string(properties, key);
        if (value != nullptr && *value != '\0') return value;
    }
    return {};
}

std::string LowerCase(std::string text) {
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

/// Where the camera's mount is told at all, under a name and in words that differ in case.
CameraFacing FacingOf(const GstStructure* properties) {
    const int count = properties == nullptr ? 0 : gst_structure_n_fields(properties);
    for (int i = 0; i < count; ++i) {
        const char* const name = gst_structure_nth_field_name(properties, static_cast<unsigned>(i));
        if (LowerCase(name) != "api.libcamera.location") continue;
        const TextOwner text(gst_value_serialize(gst_structure_get_value(properties, name)));
        const std::string location = LowerCase(text ? text.get() : "");
        if (location.find("front") != std::string::npos) return CameraFacing::kFront;
        if (location.find("back") != std::string::npos) return CameraFacing::kBack;
    }
    return CameraFacing::kUnknown;
}

}  // namespace

std::optional<CataloguedCamera> Describe(GstDevice& device) {
    const CapsOwner caps(gst_device_get_caps(&device));
    const StructureOwner properties(gst_device_get_properties(&device));
    const TextOwner name(gst_device_get_display_name(&device));
    const std::string driver = Property(properties.get(), {"v4l2.device.driver"});
    CataloguedCamera camera;
    if (caps) camera.info.modes = ModesOf(*caps);
    if (camera.info.modes.empty() || !gst_device_has_classes(&device, "Video/Source") ||
        std::ranges::find(kNoCameras, driver) != kNoCameras.end()) {
        return std::nullopt;
    }
    camera.file = Property(properties.get(), {"device.path", "api.v4l2.path"});
    camera.info.name = name ? name.get() : "";
    camera.info.facing = FacingOf(properties.get());
    // What is no device of the kernel's is named by its library, and shown under that name.
    camera.info.id =
        camera.file.empty()
            ? camera.info.name
            : StableName(camera.file, Property(properties.get(), {"v4l2.device.bus_info"}));
    camera.device = {static_cast<GstDevice*>(gst_object_ref(&device)), gst_object_unref};
    return camera;
}

}  // namespace Osp::Media
