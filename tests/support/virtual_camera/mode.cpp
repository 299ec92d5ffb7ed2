#include "tests/support/virtual_camera/mode.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <spa/param/video/format-utils.h>

#include "tests/support/pictures/colour_bars.h"

namespace Osp::Testing {

namespace {

struct FormatWords {
    const char* name;
    PixelFormat format;
    spa_video_format video;  // SPA_VIDEO_FORMAT_ENCODED for the JPEGs
};

constexpr FormatWords kFormats[] = {
    {"I420", PixelFormat::kI420, SPA_VIDEO_FORMAT_I420},
    {"NV12", PixelFormat::kNv12, SPA_VIDEO_FORMAT_NV12},
    {"YUY2", PixelFormat::kYuy2, SPA_VIDEO_FORMAT_YUY2},
    {"MJPG", PixelFormat::kMjpg, SPA_VIDEO_FORMAT_ENCODED},
    {"RGB", PixelFormat::kRgb, SPA_VIDEO_FORMAT_RGB},
};

const FormatWords& WordsOf(PixelFormat format) {
    return *std::ranges::find(kFormats, format, &FormatWords::format);
}

spa_fraction Fraction(int rate) {
    return {static_cast<std::uint32_t>(rate), 1};
}

void AddRates(spa_pod_builder& builder, const std::vector<int>& rates) {
    spa_pod_frame choice;
    spa_pod_builder_prop(&builder, SPA_FORMAT_VIDEO_framerate, 0);
    spa_pod_builder_push_choice(&builder, &choice, SPA_CHOICE_Enum, 0);
    spa_pod_builder_fraction(&builder, static_cast<std::uint32_t>(rates.front()), 1);
    for (const int rate : rates) {
        const spa_fraction fraction = Fraction(rate);
        spa_pod_builder_fraction(&builder, fraction.num, fraction.denom);
    }
    spa_pod_builder_pop(&builder, &choice);
}

const spa_pod* BuildOffer(const Mode& mode, const std::vector<int>& rates,
                          spa_pod_builder& builder) {
    const spa_video_format video = WordsOf(mode.format).video;
    const bool isJpeg = video == SPA_VIDEO_FORMAT_ENCODED;
    spa_pod_frame object;
    spa_pod_builder_push_object(&builder, &object, SPA_TYPE_OBJECT_Format, SPA_PARAM_EnumFormat);
    spa_pod_builder_prop(&builder, SPA_FORMAT_mediaType, 0);
    spa_pod_builder_id(&builder, SPA_MEDIA_TYPE_video);
    spa_pod_builder_prop(&builder, SPA_FORMAT_mediaSubtype, 0);
    spa_pod_builder_id(&builder, isJpeg ? SPA_MEDIA_SUBTYPE_mjpg : SPA_MEDIA_SUBTYPE_raw);
    if (!isJpeg) {
        spa_pod_builder_prop(&builder, SPA_FORMAT_VIDEO_format, 0);
        spa_pod_builder_id(&builder, video);
    }
    spa_pod_builder_prop(&builder, SPA_FORMAT_VIDEO_size, 0);
    spa_pod_builder_rectangle(&builder, static_cast<std::uint32_t>(mode.width),
                              static_cast<std::uint32_t>(mode.height));
    AddRates(builder, rates);
    return static_cast<const spa_pod*>(spa_pod_builder_pop(&builder, &object));
}

Mode MakeMode(PixelFormat format, const spa_rectangle& size, const spa_fraction& rate) {
    const std::uint32_t rounded = rate.denom == 0 ? 0 : rate.num / rate.denom;
    return {format, static_cast<int>(size.width), static_cast<int>(size.height),
            std::max(1, static_cast<int>(rounded))};
}

}  // namespace

std::optional<FrameSize> ParseSize(const std::string& text) {
    FrameSize size{};
    int end = 0;
    if (std::sscanf(text.c_str(), "%5dx%5d%n", &size.width, &size.height, &end) != 2) return {};
    const bool isEven = size.width % 2 == 0 && size.height % 2 == 0;
    const int least = std::min(size.width, size.height);
    if (end != static_cast<int>(text.size()) || !isEven || least < kLeastPatternSize) return {};
    return size;
}

std::optional<Mode> ParseMode(const std::string& text) {
    const std::size_t colon = text.find(':');
    const std::size_t at = text.find('@');
    if (colon == std::string::npos || at == std::string::npos || at < colon) return {};
    const auto* const words =
        std::ranges::find(kFormats, text.substr(0, colon), &FormatWords::name);
    const auto size = ParseSize(text.substr(colon + 1, at - colon - 1));
    const int rate = std::atoi(text.c_str() + at + 1);
    if (words == std::end(kFormats) || !size || rate < 1 || rate > 240) return {};
    return Mode{words->format, size->width, size->height, rate};
}

std::string Describe(const Mode& mode) {
    return std::string(WordsOf(mode.format).name) + " " + std::to_string(mode.width) + "x" +
           std::to_string(mode.height) + "@" + std::to_string(mode.rate);
}

std::vector<const spa_pod*> BuildOffers(const std::vector<Mode>& modes, spa_pod_builder& builder) {
    std::vector<const spa_pod*> offers;
    for (auto mode = modes.begin(); mode != modes.end(); ++mode) {
        const auto isLikeIt = [&mode](const Mode& other) {
            return other.format == mode->format && other.width == mode->width &&
                   other.height == mode->height;
        };
        if (std::any_of(modes.begin(), mode, isLikeIt)) continue;
        std::vector<int> rates;
        for (const Mode& other : modes) {
            if (isLikeIt(other)) rates.push_back(other.rate);
        }
        offers.push_back(BuildOffer(*mode, rates, builder));
    }
    return offers;
}

std::optional<Mode> ReadFormat(const spa_pod* format) {
    std::uint32_t type = 0;
    std::uint32_t subtype = 0;
    if (spa_format_parse(format, &type, &subtype) < 0 || type != SPA_MEDIA_TYPE_video) return {};
    if (subtype == SPA_MEDIA_SUBTYPE_mjpg) {
        spa_video_info_mjpg info{};
        if (spa_format_video_mjpg_parse(format, &info) < 0) return {};
        return MakeMode(PixelFormat::kMjpg, info.size, info.framerate);
    }
    spa_video_info_raw info{};
    if (spa_format_video_raw_parse(format, &info) < 0) return {};
    const auto* const words = std::ranges::find(kFormats, info.format, &FormatWords::video);
    if (words == std::end(kFormats)) return {};
    return MakeMode(words->format, info.size, info.framerate);
}

}  // namespace Osp::Testing
