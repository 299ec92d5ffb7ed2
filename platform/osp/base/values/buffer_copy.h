// Bytes as a buffer that the application can have.
#pragma once

#include <algorithm>
#include <memory>
#include <span>

#include <osp/base/byte_buffer.h>

namespace Osp::Base {

/// A copy, all of which remains; null without the memory. `bytes` are fewer than 2 GiB.
inline std::unique_ptr<ByteBuffer> CopyToBuffer(std::span<const byte> bytes) {
    auto buffer = std::make_unique<ByteBuffer>();
    if (Failed(buffer->Construct(static_cast<int>(bytes.size())))) return nullptr;
    std::ranges::copy(bytes, buffer->GetPointer());
    return buffer;
}

}  // namespace Osp::Base
