#include "backends/gstreamer/video_caps.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "osp/media/live/usual_sizes.h"
#include "osp/media/live/video_modes.h"

// Each field of a caps structure is a value, a range or a list of both. Drivers that name their
// sizes give one structure a size; those that scale give ranges, of which the usual sizes and the
// two ends are taken.

namespace Osp::Media {

namespace {

using Graphics::Dimension;

struct KnownFormat {
    const char* mediaType;
    const char* name;  // null where the media type says it all
    VideoFormat format;
};

constexpr std::array kFormats = {
    KnownFormat{"video/x-raw", "I420", VideoFormat::kI420},
    KnownFormat{"video/x-raw", "NV12", VideoFormat::kNv12},
    KnownFormat{"video/x-raw", "YUY2", VideoFormat::kYuy2},
    KnownFormat{"image/jpeg", nullptr, VideoFormat::kMjpeg},
};

constexpr int kMostRate = 1000;

/// Calls `use` with every value of a field, and with the two ends of every range.
template <class Use>
void ForEachEnd(const GValue* value, Use use) {
    if (value == nullptr) return;
    if (GST_VALUE_HOLDS_LIST(value)) {
        for (unsigned i = 0; i < gst_value_list_get_size(value); ++i) {
            ForEachEnd(gst_value_list_get_value(value, i), use);
        }
    } else if (GST_VALUE_HOLDS_FRACTION_RANGE(value)) {
        use(gst_value_get_fraction_range_min(value));
        use(gst_value_get_fraction_range_max(value));
    } else {
        use(value);
    }
}

std::vector<int> IntegersOf(const GValue* value) {
    std::vector<int> numbers;
    ForEachEnd(value, [&numbers](const GValue* end) {
        if (G_VALUE_HOLDS_INT(end)) numbers.push_back(g_value_get_int(end));
        if (!GST_VALUE_HOLDS_INT_RANGE(end)) return;
        numbers.push_back(gst_value_get_int_range_min(end));
        numbers.push_back(gst_value_get_int_range_max(end));
    });
    return numbers;
}

bool Offers(const GstStructure& structure, const char* field, int number) {
    GValue value = G_VALUE_INIT;
    g_value_init(&value, G_TYPE_INT);
    g_value_set_int(&value, number);
    const GValue* const offered = gst_structure_get_value(&structure, field);
    return offered != nullptr && gst_value_is_subset(&value, offered) != 0;
}

std::vector<Dimension> SizesOf(const GstStructure& structure) {
    const std::vector<int> widths = IntegersOf(gst_structure_get_value(&structure, "width"));
    const std::vector<int> heights = IntegersOf(gst_structure_get_value(&structure, "height"));
    std::vector<Dimension> sizes;
    const auto add = [&sizes](const Dimension& size) {
        if (std::ranges::find(sizes, size) == sizes.end()) sizes.push_back(size);
    };
    for (std::size_t i = 0; i < std::min(widths.size(), heights.size()); ++i) {
        const Dimension size{widths[i], heights[i]};
        if (std::min(size.width, size.height) > 0 &&
            std::max(size.width, size.height) <= kMostVideoSide) {
            add(size);
        }
    }
    for (const Dimension& size : kUsualSizes) {
        if (Offers(structure, "width", size.width) && Offers(structure, "height", size.height)) {
            add(size);
        }
    }
    return sizes;
}

double RateOf(const GValue* fraction) {
    return gst_value_get_fraction_numerator(fraction) /
           static_cast<double>(std::max(1, gst_value_get_fraction_denominator(fraction)));
}

int HighestRateOf(const GstStructure& structure) {
    int most = 0;
    ForEachEnd(gst_structure_get_value(&structure, "framerate"), [&most](const GValue* end) {
        if (!GST_VALUE_HOLDS_FRACTION(end)) return;
        // 30000/1001 is meant as 30.
        most =
            std::max(most, static_cast<int>(std::lround(std::min<double>(RateOf(end), kMostRate))));
    });
    return most;
}

bool Has(const GstStructure& structure, const KnownFormat& format) {
    if (!gst_structure_has_name(&structure, format.mediaType)) return false;
    if (format.name == nullptr) return true;
    bool isFound = false;
    ForEachEnd(gst_structure_get_value(&structure, "format"), [&](const GValue* value) {
        isFound = isFound || (G_VALUE_HOLDS_STRING(value) &&
                              std::string_view(g_value_get_string(value)) == format.name);
    });
    return isFound;
}

bool IsInOrdinaryMemory(const GstCaps& caps, unsigned index) {
    const GstCapsFeatures* const features = gst_caps_get_features(&caps, index);
    return features == nullptr ||
           gst_caps_features_is_equal(features, GST_CAPS_FEATURES_MEMORY_SYSTEM_MEMORY) != 0;
}

void Add(const VideoMode& mode, std::vector<VideoMode>& modes) {
    const auto known = std::ranges::find_if(modes, [&mode](const VideoMode& other) {
        return other.format == mode.format && other.size == mode.size;
    });
    if (known == modes.end()) {
        modes.push_back(mode);
    } else {
        known->framesASecond = std::max(known->framesASecond, mode.framesASecond);
    }
}

}  // namespace

std::vector<VideoMode> ModesOf(const GstCaps& caps) {
    std::vector<VideoMode> modes;
    for (unsigned i = 0; i < gst_caps_get_size(&caps); ++i) {
        if (!IsInOrdinaryMemory(caps, i)) continue;
        const GstStructure& structure = *gst_caps_get_structure(&caps, i);
        for (const KnownFormat& format : kFormats) {
            if (!Has(structure, format)) continue;
            for (const Dimension& size : SizesOf(structure)) {
                Add({format.format, size, HighestRateOf(structure)}, modes);
            }
        }
    }
    return modes;
}

CapsOwner CapsFor(const VideoMode& mode, GstCaps& deviceCaps) {
    const KnownFormat& format = *std::ranges::find(kFormats, mode.format, &KnownFormat::format);
    CapsOwner wanted(gst_caps_new_simple(format.mediaType, "width", G_TYPE_INT, mode.size.width,
                                         "height", G_TYPE_INT, mode.size.height, nullptr));
    if (format.name != nullptr) {
        gst_caps_set_simple(wanted.get(), "format", G_TYPE_STRING, format.name, nullptr);
    }
    const CapsOwner possible(gst_caps_make_writable(gst_caps_intersect(&deviceCaps, wanted.get())));
    if (gst_caps_is_empty(possible.get())) return nullptr;
    double best = kMostRate;
    for (unsigned i = 0; i < gst_caps_get_size(possible.get()); ++i) {
        GstStructure* const structure = gst_caps_get_structure(possible.get(), i);
        if (!gst_structure_has_field(structure, "framerate")) continue;
        gst_structure_fixate_field_nearest_fraction(structure, "framerate", kMostFramesASecond, 1);
        const GValue* const rate = gst_structure_get_value(structure, "framerate");
        if (!GST_VALUE_HOLDS_FRACTION(rate)) continue;
        const double distance = std::abs(RateOf(rate) - kMostFramesASecond);
        if (distance >= best) continue;
        best = distance;
        gst_caps_set_value(wanted.get(), "framerate", rate);
    }
    return wanted;
}

}  // namespace Osp::Media
