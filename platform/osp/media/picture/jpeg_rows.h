// JPEG a few rows at a time, so that decoding, processing and encoding can overlap.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include <osp/base/result.h>
#include <osp/graphics/dimension.h>

#include "osp/media/picture/encoded_picture.h"
#include "osp/media/picture/pixel_view.h"

namespace Osp::Media {

constexpr int kJpegQuality = 95;

/// One thread at a time. After a failure nothing more is to be had.
class JpegReader {
  public:
    /// `data` is not owned and outlives the reader.
    explicit JpegReader(std::span<const std::uint8_t> data);
    /// The same for a file, which is read no further than is asked for.
    explicit JpegReader(std::FILE* file);
    ~JpegReader();

    /// First. kOutOfRange for sizes that are not acceptable, kUnsupported for kinds of JPEG that
    /// are not taken, kInvalidFormat for damage, kOutOfMemory.
    result ReadHeader(Graphics::Dimension& size);
    /// Second. Takes all the time of decoding for a file of several scans. The rows then hold the
    /// picture at `eighths` (1 to 8) of its size, sides rounded up, which smaller ones reach
    /// sooner.
    result Start(PixelLayout layout, int eighths = 8);
    /// The next `count` rows, packed, alpha 255. kInvalidFormat, with unspecified pixels, where
    /// rows are missing or damaged.
    result ReadRows(std::uint8_t* rows, int count);
    /// What is wrong with the file although every row so far is there, in words; empty when nothing
    /// is. The last row brings to light what is wrong with the end of the file.
    std::string_view Oddity() const;

    /// Any time after the header. The contents, without marker and length, of its segments APP1 or
    /// APP2, as `number` says, that start with `start`; they stay as long as the reader.
    std::vector<std::span<const std::uint8_t>> Segments(int number, std::string_view start) const;
    /// Any time after the header; empty when there is none or a damaged one.
    std::vector<std::uint8_t> ColourProfile();

  private:
    struct State;
    std::unique_ptr<State> state_;
};

/// One thread at a time. After a failure nothing more is to be written.
class JpegWriter {
  public:
    /// `encoded` outlives the writer, its block is reused when it is large enough, and it holds the
    /// picture once the last row has been written.
    explicit JpegWriter(EncodedPicture& encoded);
    ~JpegWriter();

    /// Quality 95, 4:2:0, slow integer DCT. `metadata` is whole segments, or empty, and goes before
    /// everything else. kInvalidArgument for sizes that are not acceptable.
    result Start(const Graphics::Dimension& size, PixelLayout layout,
                 std::span<const std::uint8_t> metadata);
    /// The next rows.
    result WriteRows(const std::uint8_t* rows, int strideBytes, int count);

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace Osp::Media
