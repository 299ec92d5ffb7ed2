#include "osp/media/picture/exif.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <glib.h>
#include <libexif/exif-data.h>
#include <memory>
#include <new>
#include <string_view>
#include <utility>

#include "osp/base/owner.h"
#include "osp/media/picture/jpeg_codec.h"
#include "osp/media/picture/jpeg_rows.h"

namespace Osp::Media {

namespace {

constexpr ExifByteOrder kByteOrder = EXIF_BYTE_ORDER_INTEL;
constexpr int kExifSegment = 1;
constexpr std::string_view kExifStart{"Exif\0\0", 6};
constexpr std::size_t kDateLength = 19;
constexpr std::size_t kOffsetLength = 6;
constexpr std::size_t kLongestDescription = 32 * 1024;  // half of what a segment can hold

using Data = Base::Owner<ExifData, exif_data_unref>;
using DateTime = Base::Owner<GDateTime, g_date_time_unref>;

std::string Cut(const std::string& utf8, std::size_t longest) {
    if (utf8.size() <= longest) return utf8;
    const char* const end = g_utf8_find_prev_char(utf8.c_str(), utf8.c_str() + longest + 1);
    return {utf8.c_str(), end};
}

/// Adds entries to EXIF data whose memory comes from libexif, which frees it.
class Builder {
  public:
    explicit Builder(Data data) : memory_(exif_mem_new_default()), data_(std::move(data)) {
        if (!memory_ || !data_) throw std::bad_alloc();
        exif_data_set_byte_order(data_.get(), kByteOrder);
        exif_data_set_data_type(data_.get(), EXIF_DATA_TYPE_COMPRESSED);
    }

    /// What `info` says, in place of what was said before.
    void Describe(const ExifInfo& info) {
        Text(EXIF_IFD_0, EXIF_TAG_IMAGE_DESCRIPTION, Cut(info.description, kLongestDescription));
        Short(EXIF_IFD_0, EXIF_TAG_ORIENTATION, info.orientation);
        Text(EXIF_IFD_0, EXIF_TAG_SOFTWARE, info.software);
        Text(EXIF_IFD_EXIF, EXIF_TAG_DATE_TIME_ORIGINAL, info.dateTimeOriginal);
        Text(EXIF_IFD_EXIF, EXIF_TAG_OFFSET_TIME_ORIGINAL, info.offsetTimeOriginal);
        Long(EXIF_IFD_EXIF, EXIF_TAG_PIXEL_X_DIMENSION, info.size.width);
        Long(EXIF_IFD_EXIF, EXIF_TAG_PIXEL_Y_DIMENSION, info.size.height);
    }

    void Text(ExifIfd ifd, ExifTag tag, const std::string& text) {
        if (text.empty()) return;
        const std::string_view withEnd(text.c_str(), text.size() + 1);
        Bytes(ifd, tag, EXIF_FORMAT_ASCII, withEnd);
    }
    void Bytes(ExifIfd ifd, ExifTag tag, ExifFormat format, std::string_view bytes) {
        std::memcpy(Add(ifd, tag, format, bytes.size(), bytes.size()), bytes.data(), bytes.size());
    }
    void Short(ExifIfd ifd, ExifTag tag, int value) {
        exif_set_short(Add(ifd, tag, EXIF_FORMAT_SHORT, 1, 2), kByteOrder,
                       static_cast<ExifShort>(value));
    }
    void Long(ExifIfd ifd, ExifTag tag, int value) {
        exif_set_long(Add(ifd, tag, EXIF_FORMAT_LONG, 1, 4), kByteOrder,
                      static_cast<ExifLong>(value));
    }
    void Rational(ExifIfd ifd, ExifTag tag, unsigned value) {
        exif_set_rational(Add(ifd, tag, EXIF_FORMAT_RATIONAL, 1, 8), kByteOrder, {value, 1});
    }

    void Remove(ExifIfd ifd, ExifTag tag) {
        ExifContent* const directory = data_->ifd[ifd];
        exif_content_remove_entry(directory, exif_content_get_entry(directory, tag));
    }
    void RemoveThumbnail() {
        std::free(data_->data);
        data_->data = nullptr;
        data_->size = 0;
        ExifContent* const directory = data_->ifd[EXIF_IFD_1];
        while (directory->count > 0) exif_content_remove_entry(directory, directory->entries[0]);
    }

    /// A whole APP1 segment; empty when it would be longer than a segment can be.
    std::vector<std::uint8_t> Segment() const {
        unsigned char* saved = nullptr;
        unsigned size = 0;
        exif_data_save_data(data_.get(), &saved, &size);
        const Base::Owner<unsigned char, std::free> content(saved);
        std::vector<std::uint8_t> segment;
        AppendSegment(kExifSegment, {content.get(), size}, segment);
        return segment;
    }

  private:
    unsigned char* Add(ExifIfd ifd, ExifTag tag, ExifFormat format, std::size_t components,
                       std::size_t sizeBytes) {
        const Base::Owner<ExifEntry, exif_entry_unref> entry(exif_entry_new_mem(memory_.get()));
        auto* const bytes = static_cast<unsigned char*>(
            exif_mem_alloc(memory_.get(), static_cast<ExifLong>(sizeBytes)));
        if (!entry || bytes == nullptr) throw std::bad_alloc();
        entry->tag = tag;
        entry->format = format;
        entry->components = components;
        entry->size = static_cast<unsigned>(sizeBytes);
        entry->data = bytes;
        Remove(ifd, tag);
        exif_content_add_entry(data_->ifd[ifd], entry.get());
        return bytes;
    }

    Base::Owner<ExifMem, exif_mem_unref> memory_;
    Data data_;
};

std::string Format(GDateTime* time, const char* format) {
    const Base::Owner<char, g_free> text(g_date_time_format(time, format));
    return text.get();
}

std::string ReadText(ExifData* data, ExifIfd ifd, ExifTag tag) {
    const ExifEntry* const entry = exif_content_get_entry(data->ifd[ifd], tag);
    if (entry == nullptr || entry->format != EXIF_FORMAT_ASCII || entry->data == nullptr) return {};
    const auto* const text = reinterpret_cast<const char*>(entry->data);
    return {text, std::find(text, text + entry->size, '\0')};
}

int ReadInteger(ExifData* data, ExifIfd ifd, ExifTag tag) {
    const ExifEntry* const entry = exif_content_get_entry(data->ifd[ifd], tag);
    if (entry == nullptr || entry->components != 1) return 0;
    const ExifByteOrder order = exif_data_get_byte_order(data);
    if (entry->format == EXIF_FORMAT_SHORT && entry->size >= 2) {
        return exif_get_short(entry->data, order);
    }
    if (entry->format == EXIF_FORMAT_LONG && entry->size >= 4) {
        return static_cast<int>(exif_get_long(entry->data, order));
    }
    return 0;
}

/// Null when there is no EXIF. The segment may stand anywhere in the header, which libexif's own
/// search does not allow for.
Data Load(JpegReader reader) {
    Graphics::Dimension ignored;
    if (Failed(reader.ReadHeader(ignored))) return nullptr;
    const auto segments = reader.Segments(kExifSegment, kExifStart);
    if (segments.empty()) return nullptr;
    const std::span<const std::uint8_t> first = segments.front();
    return Data(exif_data_new_from_data(first.data(), static_cast<unsigned>(first.size())));
}

bool IsEmpty(const ExifData* data) {
    return data == nullptr || std::ranges::all_of(data->ifd, [](const ExifContent* directory) {
               return directory->count == 0;
           });
}

std::optional<ExifInfo> Interpret(const Data& data) {
    if (IsEmpty(data.get())) return std::nullopt;
    ExifInfo info;
    info.description = ReadText(data.get(), EXIF_IFD_0, EXIF_TAG_IMAGE_DESCRIPTION);
    info.software = ReadText(data.get(), EXIF_IFD_0, EXIF_TAG_SOFTWARE);
    info.orientation = ReadInteger(data.get(), EXIF_IFD_0, EXIF_TAG_ORIENTATION);
    info.dateTimeOriginal = ReadText(data.get(), EXIF_IFD_EXIF, EXIF_TAG_DATE_TIME_ORIGINAL);
    info.offsetTimeOriginal = ReadText(data.get(), EXIF_IFD_EXIF, EXIF_TAG_OFFSET_TIME_ORIGINAL);
    info.size = {ReadInteger(data.get(), EXIF_IFD_EXIF, EXIF_TAG_PIXEL_X_DIMENSION),
                 ReadInteger(data.get(), EXIF_IFD_EXIF, EXIF_TAG_PIXEL_Y_DIMENSION)};
    return info;
}

}  // namespace

ExifInfo DescribePhotograph(const std::string& description, const Graphics::Dimension& size,
                            const Base::Clock& clock) {
    const gint64 seconds = clock.EpochMs() / 1000;
    const DateTime time(clock.IsVirtual() ? g_date_time_new_from_unix_utc(seconds)
                                          : g_date_time_new_from_unix_local(seconds));
    return {.description = description,
            .dateTimeOriginal = Format(time.get(), "%Y:%m:%d %H:%M:%S"),
            .offsetTimeOriginal = Format(time.get(), "%:z"),
            .software = {},
            .orientation = 1,
            .size = size};
}

std::vector<std::uint8_t> BuildExifSegment(const ExifInfo& info) {
    constexpr unsigned kDotsAnInch = 72;
    constexpr int kInch = 2;
    constexpr int kCentred = 1;
    constexpr int kStandardRgb = 1;
    using std::string_view_literals::operator""sv;

    Builder builder{Data(exif_data_new())};
    builder.Rational(EXIF_IFD_0, EXIF_TAG_X_RESOLUTION, kDotsAnInch);
    builder.Rational(EXIF_IFD_0, EXIF_TAG_Y_RESOLUTION, kDotsAnInch);
    builder.Short(EXIF_IFD_0, EXIF_TAG_RESOLUTION_UNIT, kInch);
    builder.Short(EXIF_IFD_0, EXIF_TAG_YCBCR_POSITIONING, kCentred);
    builder.Bytes(EXIF_IFD_EXIF, EXIF_TAG_EXIF_VERSION, EXIF_FORMAT_UNDEFINED, "0231");
    builder.Bytes(EXIF_IFD_EXIF, EXIF_TAG_COMPONENTS_CONFIGURATION, EXIF_FORMAT_UNDEFINED,
                  "\x01\x02\x03\x00"sv);
    builder.Bytes(EXIF_IFD_EXIF, EXIF_TAG_FLASH_PIX_VERSION, EXIF_FORMAT_UNDEFINED, "0100");
    builder.Short(EXIF_IFD_EXIF, EXIF_TAG_COLOR_SPACE, kStandardRgb);
    builder.Describe(info);
    return builder.Segment();
}

std::vector<std::uint8_t> RebuildExifSegment(std::span<const std::uint8_t> original,
                                             const ExifInfo& info) {
    Data data = Load(JpegReader(original));
    const std::optional<ExifInfo> before = Interpret(data);
    if (!before) return BuildExifSegment(info);
    Builder builder(std::move(data));
    builder.RemoveThumbnail();
    builder.Remove(EXIF_IFD_EXIF, EXIF_TAG_MAKER_NOTE);
    builder.Describe(info);
    std::vector<std::uint8_t> segment = builder.Segment();
    if (!segment.empty()) return segment;
    ExifInfo brief = info;
    if (info.dateTimeOriginal.empty()) {
        brief.dateTimeOriginal = before->dateTimeOriginal.substr(0, kDateLength);
        brief.offsetTimeOriginal = before->offsetTimeOriginal.substr(0, kOffsetLength);
    }
    return BuildExifSegment(brief);
}

std::optional<ExifInfo> ReadExif(const std::string& realPath) {
    const Base::Owner<std::FILE, std::fclose> file(std::fopen(realPath.c_str(), "rbe"));
    return file ? Interpret(Load(JpegReader(file.get()))) : std::nullopt;
}

std::optional<ExifInfo> ReadExif(std::span<const std::uint8_t> file) {
    return Interpret(Load(JpegReader(file)));
}

}  // namespace Osp::Media
