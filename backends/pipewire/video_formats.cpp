#include "backends/pipewire/video_formats.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <spa/param/video/format-utils.h>
#include <span>

#include "osp/media/live/usual_sizes.h"
#include "osp/media/live/video_modes.h"

// A node offers values one by one, as a list whose first entry is its favourite and stands in it
// twice, or as a range. Ranges of sizes are made by converters and virtual cameras: of those, the
// sizes that cameras usually have are taken, and the two ends.

namespace Osp::Media {

namespace {

using Graphics::Dimension;

struct KnownFormat {
    spa_video_format spa;
    VideoFormat format;
};

constexpr std::array kRawFormats = {KnownFormat{SPA_VIDEO_FORMAT_I420, VideoFormat::kI420},
                                    KnownFormat{SPA_VIDEO_FORMAT_NV12, VideoFormat::kNv12},
                                    KnownFormat{SPA_VIDEO_FORMAT_YUY2, VideoFormat::kYuy2}};

/// The values of a property, whatever the kind of choice; the favourite comes first.
template <class Value>
struct Offer {
    std::span<const Value> values;
    bool isRange = false;  // favourite, least, most
};

template <class Value>
Offer<Value> ReadOffer(const spa_pod& parameter, std::uint32_t key, std::uint32_t type) {
    const spa_pod_prop* const property = spa_pod_find_prop(&parameter, nullptr, key);
    if (property == nullptr) return {};
    std::uint32_t count = 0;
    std::uint32_t choice = 0;
    const spa_pod* const pod = spa_pod_get_values(&property->value, &count, &choice);
    if (pod->type != type || pod->size != sizeof(Value) || count == 0) return {};
    const auto* const values = static_cast<const Value*>(SPA_POD_BODY_CONST(pod));
    const bool isRange = (choice == SPA_CHOICE_Range || choice == SPA_CHOICE_Step) && count >= 3;
    if (choice == SPA_CHOICE_None) count = 1;
    return {{values, count}, isRange};
}

std::vector<Dimension> ReadSizes(const spa_pod& parameter) {
    const auto offer =
        ReadOffer<spa_rectangle>(parameter, SPA_FORMAT_VIDEO_size, SPA_TYPE_Rectangle);
    std::vector<Dimension> sizes;
    const auto add = [&sizes](const Dimension& size) {
        if (std::ranges::find(sizes, size) == sizes.end()) sizes.push_back(size);
    };
    for (const spa_rectangle& value : offer.values) {
        if (value.width == 0 || value.height == 0) continue;
        if (std::max(value.width, value.height) > std::uint32_t{kMostVideoSide}) continue;
        add({static_cast<int>(value.width), static_cast<int>(value.height)});
    }
    if (!offer.isRange) return sizes;
    const spa_rectangle least = offer.values[1];
    const spa_rectangle most = offer.values[2];
    for (const Dimension& size : kUsualSizes) {
        const auto width = static_cast<std::uint32_t>(size.width);
        const auto height = static_cast<std::uint32_t>(size.height);
        if (width >= least.width && height >= least.height && width <= most.width &&
            height <= most.height) {
            add(size);
        }
    }
    return sizes;
}

int ReadRate(const spa_pod& parameter) {
    const auto offer =
        ReadOffer<spa_fraction>(parameter, SPA_FORMAT_VIDEO_framerate, SPA_TYPE_Fraction);
    int most = 0;
    for (const spa_fraction& rate : offer.values) {
        if (rate.denom == 0) continue;
        // 30000/1001 is meant as 30.
        const std::uint32_t whole = (rate.num + rate.denom / 2) / rate.denom;
        most = std::max(most, static_cast<int>(std::min<std::uint32_t>(whole, 1000)));
    }
    return most;
}

std::vector<VideoFormat> ReadRawFormats(const spa_pod& parameter) {
    std::vector<VideoFormat> formats;
    const auto offer = ReadOffer<std::uint32_t>(parameter, SPA_FORMAT_VIDEO_format, SPA_TYPE_Id);
    for (const KnownFormat& known : kRawFormats) {
        if (std::ranges::find(offer.values, static_cast<std::uint32_t>(known.spa)) !=
            offer.values.end()) {
            formats.push_back(known.format);
        }
    }
    return formats;
}

std::vector<VideoFormat> ReadFormats(const spa_pod& parameter) {
    std::uint32_t type = 0;
    std::uint32_t subtype = 0;
    if (!spa_pod_is_object(&parameter) || spa_format_parse(&parameter, &type, &subtype) < 0 ||
        type != SPA_MEDIA_TYPE_video) {
        return {};
    }
    if (subtype == SPA_MEDIA_SUBTYPE_mjpg) return {VideoFormat::kMjpeg};
    if (subtype == SPA_MEDIA_SUBTYPE_raw) return ReadRawFormats(parameter);
    return {};
}

}  // namespace

void AppendModes(const spa_pod& parameter, std::vector<VideoMode>& modes) {
    for (const VideoFormat format : ReadFormats(parameter)) {
        for (const Dimension& size : ReadSizes(parameter)) {
            modes.push_back({format, size, ReadRate(parameter)});
        }
    }
}

const spa_pod* BuildFormat(spa_pod_builder& builder, const VideoMode& mode) {
    const bool isMjpeg = mode.format == VideoFormat::kMjpeg;
    const spa_rectangle size{static_cast<std::uint32_t>(mode.size.width),
                             static_cast<std::uint32_t>(mode.size.height)};
    const int most = mode.framesASecond == 0 ? kMostFramesASecond : mode.framesASecond;
    const auto rate = [](int frames) {
        return spa_fraction{static_cast<std::uint32_t>(frames), 1};
    };
    // The range ends above what the device offers, so that its 30000/1001 and 60 fit in.
    const spa_fraction favourite = rate(std::min(most, kMostFramesASecond));
    const spa_fraction least = rate(most >= kFewestFramesASecond ? kFewestFramesASecond : 0);
    const spa_fraction highest = rate(std::max(most, kMostFramesASecond) + 1);
    spa_pod_frame frame;
    spa_pod_builder_push_object(&builder, &frame, SPA_TYPE_OBJECT_Format, SPA_PARAM_EnumFormat);
    spa_pod_builder_add(&builder, SPA_FORMAT_mediaType, SPA_POD_Id(SPA_MEDIA_TYPE_video),
                        SPA_FORMAT_mediaSubtype,
                        SPA_POD_Id(isMjpeg ? SPA_MEDIA_SUBTYPE_mjpg : SPA_MEDIA_SUBTYPE_raw), 0);
    if (!isMjpeg) {
        const auto known = std::ranges::find(kRawFormats, mode.format, &KnownFormat::format);
        spa_pod_builder_add(&builder, SPA_FORMAT_VIDEO_format, SPA_POD_Id(known->spa), 0);
    }
    spa_pod_builder_add(&builder, SPA_FORMAT_VIDEO_size, SPA_POD_Rectangle(&size),
                        SPA_FORMAT_VIDEO_framerate,
                        SPA_POD_CHOICE_RANGE_Fraction(&favourite, &least, &highest), 0);
    return static_cast<const spa_pod*>(spa_pod_builder_pop(&builder, &frame));
}

std::optional<VideoMode> ReadFormat(const spa_pod& format) {
    const std::vector<VideoFormat> formats = ReadFormats(format);
    const std::vector<Dimension> sizes = ReadSizes(format);
    if (formats.empty() || sizes.empty()) return std::nullopt;
    return VideoMode{formats.front(), sizes.front(), ReadRate(format)};
}

}  // namespace Osp::Media
