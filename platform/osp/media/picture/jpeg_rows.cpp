#include "osp/media/picture/jpeg_rows.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <csetjmp>
#include <cstddef>
#include <cstdio>  // jpeglib.h needs it
#include <cstdlib>
#include <jerror.h>
#include <jpeglib.h>

#include "osp/base/owner.h"

namespace Osp::Media {

namespace {

constexpr std::size_t kStartMarkerBytes = 2;
constexpr int kMostScans = 500;  // more only serve to keep a decoder busy
constexpr int kRowsAtOnce = 16;
constexpr int kSavedSegments[] = {1, 2};
constexpr unsigned kLongestContent = 0xFFFF - 2;

constexpr J_COLOR_SPACE ColorSpaceOf(PixelLayout layout) {
    switch (layout) {
        case PixelLayout::kRgb:
            return JCS_EXT_RGB;
        case PixelLayout::kRgba:
            return JCS_EXT_RGBA;
        case PixelLayout::kBgrx:
            return JCS_EXT_BGRX;
    }
    return JCS_EXT_RGB;
}

/// Warnings that leave every row as it was meant. All others mean that something of the picture is
/// missing or wrong; without minding them, a truncated file would decode to a half grey picture.
struct Harmless {
    int code;
    const char* oddity;
};
constexpr Harmless kHarmless[] = {
    {JWRN_JPEG_EOF, "the end marker is missing"},
    {JWRN_EXTRANEOUS_DATA, "there are stray bytes before a marker"},
    {JWRN_NOT_SEQUENTIAL, "the parameters of a scan are odd"},
    {JWRN_BOGUS_PROGRESSION, "the parameters of a scan are odd"},
    {JWRN_ADOBE_XFORM, "the colour transform is unknown"},
};

constexpr int kNotTaken[] = {JERR_BAD_PRECISION,       JERR_SOF_UNSUPPORTED, JERR_ARITH_NOTIMPL,
                             JERR_CONVERSION_NOTIMPL,  JERR_NOT_COMPILED,    JERR_CCIR601_NOTIMPL,
                             JERR_FRACT_SAMPLE_NOTIMPL};

result ResultOfError(int code) {
    if (code == JERR_OUT_OF_MEMORY) return result::kOutOfMemory;
    if (code == JERR_IMAGE_TOO_BIG) return result::kOutOfRange;
    const bool isTaken = std::ranges::find(kNotTaken, code) == std::end(kNotTaken);
    return isTaken ? result::kInvalidFormat : result::kUnsupported;
}

/// Whether the data of a scan are being decoded, where neither stray bytes are harmless (data were
/// skipped) nor, in arithmetic coding, the end of the file (zeros are made up without a word).
bool IsHarmlessHere(int code, const jpeg_decompress_struct& jpeg) {
    const bool isInScan = jpeg.input_scan_number > 0 && jpeg.input_iMCU_row < jpeg.total_iMCU_rows;
    const bool isSerious =
        code == JWRN_EXTRANEOUS_DATA || (code == JWRN_JPEG_EOF && jpeg.arith_code != FALSE);
    return !isInScan || !isSerious;
}

/// The library reports failure by a call that must not return.
struct ErrorManager {
    jpeg_error_mgr base;  // first: the library hands out a pointer to it
    std::jmp_buf jump;
    result failure = result::kSuccess;
    const char* oddity = "";
    bool isEndMissing = false;

    ErrorManager() {
        jpeg_std_error(&base);
        base.error_exit = [](j_common_ptr common) {
            Fail(common, ResultOfError(common->err->msg_code));
        };
        base.emit_message = [](j_common_ptr common, int level) {
            if (level < 0) Warn(reinterpret_cast<j_decompress_ptr>(common));
        };
        base.output_message = [](j_common_ptr) {};
    }

    [[noreturn]] static void Fail(j_common_ptr common, result r) {
        auto* const errors = reinterpret_cast<ErrorManager*>(common->err);
        errors->failure = r;
        std::longjmp(errors->jump, 1);
    }
    /// Writing warns of nothing.
    static void Warn(j_decompress_ptr jpeg) {
        const int code = jpeg->err->msg_code;
        const auto* const harmless = std::ranges::find(kHarmless, code, &Harmless::code);
        if (harmless == std::end(kHarmless) || !IsHarmlessHere(code, *jpeg)) {
            Fail(reinterpret_cast<j_common_ptr>(jpeg), result::kInvalidFormat);
        }
        auto* const errors = reinterpret_cast<ErrorManager*>(jpeg->err);
        errors->oddity = harmless->oddity;
        errors->isEndMissing |= code == JWRN_JPEG_EOF;
    }
};

/// Runs `step`, which owns nothing, and returns what became of it.
template <class Step>
result Try(ErrorManager& errors, const Step& step) {
    if (setjmp(errors.jump) != 0) return errors.failure;
    step();
    return result::kSuccess;
}

void LimitScans(j_common_ptr common) {
    if (reinterpret_cast<j_decompress_ptr>(common)->input_scan_number > kMostScans) {
        ErrorManager::Fail(common, result::kInvalidFormat);
    }
}

/// Whether the scans so far bring all components in full: a component gets its table with its first
/// scan, and a progressive one has bits to come or not.
bool HasAllScans(const jpeg_decompress_struct& jpeg) {
    for (int i = 0; i < jpeg.num_components; ++i) {
        if (jpeg.comp_info[i].quant_table == nullptr) return false;
        if (jpeg.coef_bits == nullptr) continue;
        const std::span<const int> missing(jpeg.coef_bits[i], DCTSIZE2);
        if (std::ranges::any_of(missing, [](int bits) { return bits != 0; })) return false;
    }
    return true;
}

/// What the library's authors promise not to exceed: three bytes for each pixel of the blocks, and
/// the tables.
std::size_t MostJpegBytes(const Graphics::Dimension& size) {
    constexpr std::size_t kTableBytes = 2048;
    const auto padded = [](int side) { return (static_cast<std::size_t>(side) + 15) / 16 * 16; };
    return 3 * padded(size.width) * padded(size.height) + kTableBytes;
}

/// Calls step(pointers, count) until `count` rows have been dealt with; it returns how many it did.
template <class Step>
void EveryRow(std::uint8_t* rows, std::ptrdiff_t strideBytes, int count, const Step& step) {
    for (int done = 0; done < count;) {
        std::array<JSAMPROW, kRowsAtOnce> pointers;
        const int wanted = std::min(count - done, kRowsAtOnce);
        for (int i = 0; i < wanted; ++i) {
            pointers[static_cast<std::size_t>(i)] = rows + strideBytes * (done + i);
        }
        done += static_cast<int>(step(pointers.data(), static_cast<JDIMENSION>(wanted)));
    }
}

}  // namespace

struct JpegReader::State {
    std::span<const std::uint8_t> data;
    std::FILE* file;  // null: the data
    ErrorManager errors;
    jpeg_progress_mgr progress{};
    jpeg_decompress_struct jpeg{};

    State(std::span<const std::uint8_t> wholeData, std::FILE* wholeFile)
        : data(wholeData), file(wholeFile) {
        jpeg.err = &errors.base;
        progress.progress_monitor = LimitScans;
    }
    ~State() { jpeg_destroy_decompress(&jpeg); }

    result Try(const auto& step) { return Media::Try(errors, step); }
};

JpegReader::JpegReader(std::span<const std::uint8_t> data)
    : state_(std::make_unique<State>(data, nullptr)) {}

JpegReader::JpegReader(std::FILE* file)
    : state_(std::make_unique<State>(std::span<const std::uint8_t>(), file)) {}

JpegReader::~JpegReader() = default;

result JpegReader::ReadHeader(Graphics::Dimension& size) {
    State& state = *state_;
    const result r = state.Try([&state] {
        jpeg_create_decompress(&state.jpeg);
        state.jpeg.progress = &state.progress;
        if (state.file != nullptr) {
            jpeg_stdio_src(&state.jpeg, state.file);
        } else {
            jpeg_mem_src(&state.jpeg, state.data.data(), state.data.size());
        }
        for (const int number : kSavedSegments) {
            jpeg_save_markers(&state.jpeg, JPEG_APP0 + number, kLongestContent);
        }
        jpeg_read_header(&state.jpeg, TRUE);
    });
    if (Failed(r)) return r;
    if (!IsAcceptableSize(state.jpeg.image_width, state.jpeg.image_height)) {
        return result::kOutOfRange;
    }
    size = {static_cast<int>(state.jpeg.image_width), static_cast<int>(state.jpeg.image_height)};
    return result::kSuccess;
}

result JpegReader::Start(PixelLayout layout, int eighths) {
    assert(eighths >= 1 && eighths <= 8);
    State& state = *state_;
    const result r = state.Try([&state, layout, eighths] {
        state.jpeg.scale_num = static_cast<unsigned>(eighths);
        state.jpeg.scale_denom = 8;
        state.jpeg.out_color_space = ColorSpaceOf(layout);
        state.jpeg.dct_method = JDCT_ISLOW;
        jpeg_start_decompress(&state.jpeg);
    });
    if (Failed(r)) return r;
    // Of a file of several scans all have been read, and the missing end may be a missing scan.
    const bool isCutOff = state.errors.isEndMissing && !HasAllScans(state.jpeg);
    return isCutOff ? result::kInvalidFormat : result::kSuccess;
}

result JpegReader::ReadRows(std::uint8_t* rows, int count) {
    State& state = *state_;
    const std::ptrdiff_t strideBytes =
        std::ptrdiff_t{state.jpeg.output_components} * state.jpeg.output_width;
    const result r = state.Try([&] {
        EveryRow(rows, strideBytes, count, [&](JSAMPARRAY pointers, JDIMENSION wanted) {
            return jpeg_read_scanlines(&state.jpeg, pointers, wanted);
        });
    });
    if (Failed(r) || state.jpeg.output_scanline < state.jpeg.output_height) return r;
    // Every row is there, whatever comes behind them.
    if (Failed(state.Try([&state] { jpeg_finish_decompress(&state.jpeg); }))) {
        state.errors.oddity = "what follows the picture is damaged";
    }
    return result::kSuccess;
}

std::string_view JpegReader::Oddity() const {
    return state_->errors.oddity;
}

std::vector<std::span<const std::uint8_t>> JpegReader::Segments(int number,
                                                                std::string_view start) const {
    std::vector<std::span<const std::uint8_t>> segments;
    for (auto* saved = state_->jpeg.marker_list; saved != nullptr; saved = saved->next) {
        const std::string_view content(reinterpret_cast<const char*>(saved->data),
                                       saved->data_length);
        if (saved->marker == JPEG_APP0 + number && content.starts_with(start)) {
            segments.emplace_back(saved->data, saved->data_length);
        }
    }
    return segments;
}

std::vector<std::uint8_t> JpegReader::ColourProfile() {
    State& state = *state_;
    JOCTET* data = nullptr;
    unsigned size = 0;
    // A damaged profile is a warning too, which has nothing to do with the picture.
    (void)state.Try([&] { (void)jpeg_read_icc_profile(&state.jpeg, &data, &size); });
    const Base::Owner<JOCTET, std::free> owned(data);
    return {data, data + size};
}

struct JpegWriter::State {
    EncodedPicture& encoded;
    ErrorManager errors;
    jpeg_destination_mgr destination{};
    jpeg_compress_struct jpeg{};

    explicit State(EncodedPicture& picture) : encoded(picture) {
        jpeg.err = &errors.base;
        destination.init_destination = [](j_compress_ptr) {};
        destination.empty_output_buffer = [](j_compress_ptr compress) -> boolean {
            ErrorManager::Fail(reinterpret_cast<j_common_ptr>(compress), result::kFailure);
        };
        destination.term_destination = [](j_compress_ptr) {};
    }
    ~State() { jpeg_destroy_compress(&jpeg); }

    result Try(const auto& step) { return Media::Try(errors, step); }

    void SetUp(const Graphics::Dimension& size, PixelLayout layout) {
        jpeg_create_compress(&jpeg);
        jpeg.dest = &destination;
        jpeg.image_width = static_cast<JDIMENSION>(size.width);
        jpeg.image_height = static_cast<JDIMENSION>(size.height);
        jpeg.input_components = BytesPerPixel(layout);
        jpeg.in_color_space = ColorSpaceOf(layout);
        jpeg_set_defaults(&jpeg);  // 4:2:0 among them
        jpeg_set_quality(&jpeg, kJpegQuality, TRUE);
        jpeg.dct_method = JDCT_ISLOW;
        jpeg_start_compress(&jpeg, TRUE);
    }
};

JpegWriter::JpegWriter(EncodedPicture& encoded) : state_(std::make_unique<State>(encoded)) {}

JpegWriter::~JpegWriter() = default;

result JpegWriter::Start(const Graphics::Dimension& size, PixelLayout layout,
                         std::span<const std::uint8_t> metadata) {
    if (!IsAcceptableSize(size.width, size.height)) return result::kInvalidArgument;
    State& state = *state_;
    state.encoded.Reserve(MostJpegBytes(size) + metadata.size());
    state.encoded.sizeBytes = 0;
    // The metadata lies between the start marker and the rest. So the picture is encoded that much
    // further back, and its start marker is overwritten by the end of the metadata.
    std::uint8_t* const start = state.encoded.block.data();
    std::uint8_t* const shifted = start + metadata.size();
    state.destination.next_output_byte = shifted;
    state.destination.free_in_buffer = state.encoded.block.size() - metadata.size();
    const result r = state.Try([&] { state.SetUp(size, layout); });
    if (Failed(r)) return r;
    std::copy_n(shifted, kStartMarkerBytes, start);
    std::ranges::copy(metadata, start + kStartMarkerBytes);
    return result::kSuccess;
}

result JpegWriter::WriteRows(const std::uint8_t* rows, int strideBytes, int count) {
    State& state = *state_;
    return state.Try([&] {
        // The library's rows are not const, but it only reads them.
        EveryRow(const_cast<std::uint8_t*>(rows), strideBytes, count,
                 [&](JSAMPARRAY pointers, JDIMENSION wanted) {
                     return jpeg_write_scanlines(&state.jpeg, pointers, wanted);
                 });
        if (state.jpeg.next_scanline < state.jpeg.image_height) return;
        jpeg_finish_compress(&state.jpeg);
        state.encoded.sizeBytes = static_cast<std::size_t>(state.destination.next_output_byte -
                                                           state.encoded.block.data());
    });
}

}  // namespace Osp::Media
