// The pictures of a motion JPEG stream.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "osp/base/values/block_pool.h"
#include "osp/media/live/planar_picture.h"

namespace Osp::Media {

/// From the header; false for what is no JPEG or larger than any camera's.
bool ReadMjpegSize(std::span<const std::uint8_t> jpeg, Graphics::Dimension& size);

/// Keeps what a stream needs again for the next picture. One thread at a time.
class MjpegDecoder {
  public:
    MjpegDecoder();
    ~MjpegDecoder();
    MjpegDecoder(const MjpegDecoder&) = delete;
    MjpegDecoder& operator=(const MjpegDecoder&) = delete;

    /// Decodes at 1/shrink of the size, with shrink 1, 2, 4 or 8; `view` is valid until the next
    /// call. False, with nothing in `view`, for a picture that is damaged or has other than three
    /// components or one.
    bool Decode(std::span<const std::uint8_t> jpeg, int shrink, PlanarView& view);

  private:
    struct Sizes;

    void Join(const Sizes& sizes, PlanarView& view);

    void* decompressor_;  // the library's handle, owned
    Base::Block planes_;
    PlanarPicture joined_;
};

}  // namespace Osp::Media
