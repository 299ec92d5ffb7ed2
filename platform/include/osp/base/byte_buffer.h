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
///
/// Whoever fills or empties it bit by bit has a position and a limit, 0 <= position <= limit <=
/// capacity; what lies between them remains. A new buffer's are 0 and its capacity.
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
    /// Becomes a copy of `other`, of the same capacity, position and limit; fails like the one
    /// above.
    result Construct(const ByteBuffer& other);

    /// In bytes.
    int GetCapacity() const { return capacity_; }

    int GetPosition() const { return position_; }
    int GetLimit() const { return limit_; }
    int GetRemaining() const { return limit_ - position_; }
    /// kOutOfRange, changing nothing, for a position beyond the limit or before 0.
    result SetPosition(int position);
    /// kOutOfRange, changing nothing, for a limit beyond the capacity or before 0. A position
    /// beyond it comes back to it.
    result SetLimit(int limit);
    /// What has been put in can be taken out: the limit becomes the position, the position 0.
    void Flip();
    std::span<byte> Remaining() { return Bytes().subspan(Offset(), Length()); }
    std::span<const byte> Remaining() const { return Bytes().subspan(Offset(), Length()); }

    /// kOutOfRange, changing nothing, when `index` lies outside the buffer.
    result GetByte(int index, byte& value) const;
    result SetByte(int index, byte value);

    /// The first byte; null before construction. Valid for the life of the buffer.
    byte* GetPointer() { return data_; }
    const byte* GetPointer() const { return data_; }
    std::span<byte> Bytes() { return {data_, static_cast<std::size_t>(capacity_)}; }
    std::span<const byte> Bytes() const { return {data_, static_cast<std::size_t>(capacity_)}; }

    /// Sets every byte to 0; position and limit stay.
    void Clear();

  private:
    friend class Block;  // which takes a buffer's memory over

    std::size_t Offset() const { return static_cast<std::size_t>(position_); }
    std::size_t Length() const { return static_cast<std::size_t>(GetRemaining()); }

    byte* data_ = nullptr;  // owned; returned to the pool of blocks
    int capacity_ = 0;
    int position_ = 0;
    int limit_ = 0;
};

}  // namespace Osp::Base
