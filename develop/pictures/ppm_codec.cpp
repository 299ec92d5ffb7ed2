#include "develop/pictures/ppm_codec.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

namespace Kivo::Tools {

namespace {

using Osp::Graphics::Dimension;

constexpr std::string_view kMagic = "P6";
constexpr int kHighest = 255;  // of a channel in memory
constexpr int kHighestInFile = 65535;

bool IsSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// Walks through the words of a header; comments count as space.
class Words {
  public:
    explicit Words(std::string_view text) : text_(text) {}

    /// A number, with at least one space or comment before it; nothing when there is none.
    std::optional<int> Number() {
        if (!SkipSpace()) return std::nullopt;
        int value = 0;
        const char* const start = text_.data() + at_;
        const auto [end, error] = std::from_chars(start, text_.data() + text_.size(), value);
        if (error != std::errc{} || value < 0) return std::nullopt;
        at_ += static_cast<std::size_t>(end - start);
        return value;
    }
    /// Behind the single space that ends the header.
    std::optional<std::size_t> End() const {
        if (at_ >= text_.size() || !IsSpace(text_[at_])) return std::nullopt;
        return at_ + 1;
    }

  private:
    bool SkipSpace() {
        const std::size_t start = at_;
        for (bool isComment = false; at_ < text_.size(); ++at_) {
            const char c = text_[at_];
            if (c == '#') isComment = true;
            if (!isComment && !IsSpace(c)) break;
            if (c == '\n') isComment = false;
        }
        return at_ > start;
    }

    std::string_view text_;
    std::size_t at_ = kMagic.size();
};

struct Header {
    Dimension size;
    int highest;
    std::size_t sizeBytes;

    bool HasWideChannels() const { return highest > 255; }
};

std::optional<Header> ReadHeader(std::span<const std::uint8_t> data) {
    if (!IsPpm(data)) return std::nullopt;
    Words words({reinterpret_cast<const char*>(data.data()), data.size()});
    const std::optional<int> width = words.Number();
    const std::optional<int> height = words.Number();
    const std::optional<int> highest = words.Number();
    const std::optional<std::size_t> end = words.End();
    if (!width || !height || !highest || !end) return std::nullopt;
    if (*highest == 0 || *highest > kHighestInFile) return std::nullopt;
    return Header{{*width, *height}, *highest, *end};
}

/// Channels of another range, rounded; those above it are taken for its highest value.
void Scale(const Header& header, std::span<const std::uint8_t> channels, std::uint8_t* pixels) {
    const std::size_t width = header.HasWideChannels() ? 2 : 1;
    for (std::size_t at = 0; at < channels.size(); at += width) {
        const int read = width == 2 ? channels[at] << 8 | channels[at + 1] : channels[at];
        const int value = std::min(read, header.highest);
        *pixels++ =
            static_cast<std::uint8_t>((value * kHighest + header.highest / 2) / header.highest);
    }
}

}  // namespace

bool IsPpm(std::span<const std::uint8_t> data) {
    return data.size() > kMagic.size() && std::memcmp(data.data(), kMagic.data(), 2) == 0 &&
           (IsSpace(static_cast<char>(data[2])) || data[2] == '#');
}

result ReadPpmSize(std::span<const std::uint8_t> data, Dimension& size) {
    const std::optional<Header> header = ReadHeader(data);
    if (!header || header->size.width == 0 || header->size.height == 0) {
        return result::kInvalidFormat;
    }
    if (!Osp::Media::IsAcceptableSize(header->size.width, header->size.height)) {
        return result::kOutOfRange;
    }
    size = header->size;
    return result::kSuccess;
}

result DecodePpm(std::span<const std::uint8_t> data, const Dimension& size, std::uint8_t* pixels) {
    const std::optional<Header> header = ReadHeader(data);
    if (!header || header->size != size) return result::kInvalidFormat;
    const std::size_t needed = Osp::Media::PackedSize(size, Osp::Media::PixelLayout::kRgb) *
                               (header->HasWideChannels() ? 2 : 1);
    if (data.size() - header->sizeBytes < needed) return result::kInvalidFormat;
    const std::span<const std::uint8_t> channels = data.subspan(header->sizeBytes, needed);
    if (header->highest == kHighest) {
        std::ranges::copy(channels, pixels);
    } else {
        Scale(*header, channels, pixels);
    }
    return result::kSuccess;
}

void EncodePpm(const Osp::Media::PixelView& picture, Osp::Media::EncodedPicture& encoded) {
    const auto [width, height] = picture.size;
    const std::string header = std::string(kMagic) + '\n' + std::to_string(width) + ' ' +
                               std::to_string(height) + '\n' + std::to_string(kHighest) + '\n';
    encoded.sizeBytes = header.size() + Osp::Media::PackedSize(picture.size, picture.layout);
    encoded.Reserve(encoded.sizeBytes);
    std::uint8_t* out = std::ranges::copy(header, encoded.block.data()).out;
    const auto rowBytes = static_cast<std::size_t>(3 * width);
    for (int y = 0; y < height; ++y, out += rowBytes) {
        std::copy_n(picture.pixels + std::ptrdiff_t{picture.strideBytes} * y, rowBytes, out);
    }
}

}  // namespace Kivo::Tools
