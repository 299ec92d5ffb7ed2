// The bytes of a picture's file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include <osp/base/byte_buffer.h>
#include <osp/base/result.h>

#include "osp/base/values/block_pool.h"

namespace Osp::Media {

/// In recycled memory.
struct EncodedPicture {
    Base::Block block;          // may be larger than the picture
    std::size_t sizeBytes = 0;  // of the picture

    std::span<const std::uint8_t> Bytes() const { return {block.data(), sizeBytes}; }
    /// Constructs `buffer` with the picture.
    result CopyTo(Base::ByteBuffer& buffer) const;
    /// Makes room for so many bytes; what the block held may be lost.
    void Reserve(std::size_t mostBytes);
};

}  // namespace Osp::Media
