// What is kept is found again by its exact size, so Take and Give round in the same way and a block
// goes back with the size that it was taken with. `kept` is the sum of the sizes in `free`. Blocks
// are allocated and freed outside the mutex: the system takes its time over megabytes, and the
// threads that decode and encode should not wait for one another.
//
// When memory runs out, the pool lets go of everything and keeps nothing from then on. That is
// deliberate and for good: a machine that ran out once will again, and then slower is better than a
// photograph lost.
#include "osp/base/values/block_pool.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <map>
#include <mutex>
#include <new>
#include <utility>

#include <osp/base/byte_buffer.h>

namespace Osp::Base {

namespace {

constexpr std::size_t kSmallest = 64 * 1024;  // below, the heap's own recycling serves
constexpr std::size_t kMostKept = 64U << 20;
constexpr std::align_val_t kAlignment{64};

struct Pool {
    std::mutex mutex;
    std::multimap<std::size_t, std::uint8_t*> free;
    std::size_t kept = 0;
    std::size_t mostKept = kMostKept;
};

Pool& ThePool() {
    static Pool* const pool = new Pool;  // outlives every static that holds a block
    return *pool;
}

// No two JPEGs have the same size; with up to an eighth of slack they share blocks.
std::size_t RoundUp(std::size_t size) {
    const std::size_t step = std::max<std::size_t>(4096, std::bit_floor(size) / 8);
    return (size + step - 1) / step * step;
}

std::uint8_t* Allocate(std::size_t size) {
    return static_cast<std::uint8_t*>(::operator new(size, kAlignment));
}

void Free(std::uint8_t* block) {
    ::operator delete(block, kAlignment);
}

/// A block of exactly this size, or null.
std::uint8_t* TakeKept(std::size_t size) {
    Pool& pool = ThePool();
    const std::lock_guard lock(pool.mutex);
    const auto found = pool.free.find(size);
    if (found == pool.free.end()) return nullptr;
    std::uint8_t* const block = found->second;
    pool.free.erase(found);
    pool.kept -= size;
    return block;
}

/// The largest block while there are too many; null then.
std::uint8_t* TakeSurplus() {
    Pool& pool = ThePool();
    const std::lock_guard lock(pool.mutex);
    if (pool.kept <= pool.mostKept) return nullptr;
    // Largest first: what is kept should be what the session keeps asking for.
    assert(!pool.free.empty());
    const auto last = std::prev(pool.free.end());
    assert(last->first <= pool.kept);
    std::uint8_t* const block = last->second;
    pool.kept -= last->first;
    pool.free.erase(last);
    return block;
}

void FreeSurplus() {
    while (std::uint8_t* const block = TakeSurplus()) Free(block);
}

/// From here on nothing is kept: blocks of other sizes may be what is missing.
void StopKeeping() {
    {
        const std::lock_guard lock(ThePool().mutex);
        ThePool().mostKept = 0;
    }
    FreeSurplus();
}

bool Keep(std::uint8_t* block, std::size_t size) {
    Pool& pool = ThePool();
    const std::lock_guard lock(pool.mutex);
    try {
        pool.free.emplace(size, block);
    } catch (const std::bad_alloc&) {
        return false;
    }
    pool.kept += size;
    return true;
}

}  // namespace

std::uint8_t* BlockPool::Take(std::size_t size) {
    if (size < kSmallest) return Allocate(size);
    size = RoundUp(size);
    if (std::uint8_t* const block = TakeKept(size)) return block;
    try {
        return Allocate(size);
    } catch (const std::bad_alloc&) {
        StopKeeping();
        return Allocate(size);
    }
}

void BlockPool::Give(std::uint8_t* block, std::size_t size) {
    if (block == nullptr) return;
    assert(reinterpret_cast<std::uintptr_t>(block) % static_cast<std::size_t>(kAlignment) == 0);
    if (size < kSmallest || !Keep(block, RoundUp(size))) return Free(block);
    FreeSurplus();
}

Block::Block(Block&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0)) {}

Block::Block(ByteBuffer&& buffer) noexcept
    : data_(std::exchange(buffer.data_, nullptr)),
      size_(static_cast<std::size_t>(std::exchange(buffer.capacity_, 0))) {}

Block& Block::operator=(Block&& other) noexcept {
    std::swap(data_, other.data_);
    std::swap(size_, other.size_);
    return *this;
}

void Block::Fit(std::size_t size) {
    if (size_ == size) return;
    *this = Block();  // goes back before its successor is taken
    *this = Block(size);
}

}  // namespace Osp::Base
