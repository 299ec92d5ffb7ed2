#include <algorithm>
#include <utility>

#include <osp/base/byte_buffer.h>

#include "osp/base/out_of_memory.h"
#include "osp/base/values/block_pool.h"

namespace Osp::Base {

ByteBuffer::ByteBuffer(ByteBuffer&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)),
      capacity_(std::exchange(other.capacity_, 0)),
      position_(std::exchange(other.position_, 0)),
      limit_(std::exchange(other.limit_, 0)) {}

ByteBuffer& ByteBuffer::operator=(ByteBuffer&& other) noexcept {
    std::swap(data_, other.data_);
    std::swap(capacity_, other.capacity_);
    std::swap(position_, other.position_);
    std::swap(limit_, other.limit_);
    return *this;
}

ByteBuffer::~ByteBuffer() {
    BlockPool::Give(data_, static_cast<std::size_t>(capacity_));
}

result ByteBuffer::Construct(int capacity) {
    if (data_ != nullptr) return result::kInvalidState;
    if (capacity < 0) return result::kInvalidArgument;
    return OrOutOfMemory([&] {
        data_ = BlockPool::Take(static_cast<std::size_t>(capacity));
        capacity_ = capacity;
        limit_ = capacity;
        return result::kSuccess;
    });
}

result ByteBuffer::Construct(const ByteBuffer& other) {
    const result r = Construct(other.capacity_);
    if (Failed(r)) return r;
    std::ranges::copy(other.Bytes(), data_);
    position_ = other.position_;
    limit_ = other.limit_;
    return r;
}

result ByteBuffer::SetPosition(int position) {
    if (position < 0 || position > limit_) return result::kOutOfRange;
    position_ = position;
    return result::kSuccess;
}

result ByteBuffer::SetLimit(int limit) {
    if (limit < 0 || limit > capacity_) return result::kOutOfRange;
    limit_ = limit;
    position_ = std::min(position_, limit);
    return result::kSuccess;
}

void ByteBuffer::Flip() {
    limit_ = std::exchange(position_, 0);
}

result ByteBuffer::GetByte(int index, byte& value) const {
    if (index < 0 || index >= capacity_) return result::kOutOfRange;
    value = data_[index];
    return result::kSuccess;
}

result ByteBuffer::SetByte(int index, byte value) {
    if (index < 0 || index >= capacity_) return result::kOutOfRange;
    data_[index] = value;
    return result::kSuccess;
}

void ByteBuffer::Clear() {
    std::ranges::fill(Bytes(), byte{0});
}

}  // namespace Osp::Base
