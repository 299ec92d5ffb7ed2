// A block of bytes of fixed capacity.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include <osp/base/object.h>
#include <osp/base/result.h>

namespace Osp::Base {

using byte = std::uint8_t;

class Block;

/// Two-phase: an unconstructed buffer has capacity 0. Large blocks are recycled for the life of
/// the process, because the first touch of fresh memory costs more than most work done in it. One
/// thread at a time.
class ByteBuffer : public Object {
  public:
    ByteBuffer() = default;
    ByteBuffer(ByteBuffer&&) noexcept;
    ByteBuffer& operator=(ByteBuffer&&) noexcept;
    ~ByteBuffer() override;

    /// Takes `capacity` bytes, whose content is whatever was there before. kInvalidArgument for a
    /// negative capacity, kInvalidState when constructed already; kOutOfMemory leaves it
    /// unconstructed.
    result Construct(int capacity);
    /// Becomes a copy of `other`, of the same capacity; fails like the one above.
    result Construct(const ByteBuffer& other);

    /// In bytes.
    int GetCapacity() const { return capacity_; }

    /// kOutOfRange, changing nothing, when `index` lies outside the buffer.
    result GetByte(int index, byte& value) const;
    result SetByte(int index, byte value);

    /// The first byte; null before construction. Valid for the life of the buffer.
    byte* GetPointer() { return data_; }
    const byte* GetPointer() const { return data_; }
    std::span<byte> Bytes() { return {data_, static_cast<std::size_t>(capacity_)}; }
    std::span<const byte> Bytes() const { return {data_, static_cast<std::size_t>(capacity_)}; }

    /// Sets every byte to 0.
    void Clear();

  private:
    friend class Block;  // which takes a buffer's memory over

    byte* data_ = nullptr;  // owned; returned to the pool of blocks
    int capacity_ = 0;
};

}  // namespace Osp::Base
