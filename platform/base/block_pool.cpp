#include "base/block_pool.h"

#include <algorithm>
#include <bit>
#include <map>
#include <mutex>
#include <new>
#include <utility>
#include <vector>

namespace Osp::Base {

namespace {

constexpr std::size_t kSmallest = 64 * 1024;  // below, the heap's own recycling serves
constexpr std::size_t kMostKept = 64U << 20;
constexpr std::align_val_t kAlignment{64};

struct Pool {
    std::mutex mutex;
    std::multimap<std::size_t, std::uint8_t*> free;
    std::size_t kept = 0;
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

}  // namespace

std::uint8_t* BlockPool::Take(std::size_t size) {
    if (size < kSmallest) return Allocate(size == 0 ? 1 : size);
    size = RoundUp(size);
    Pool& pool = ThePool();
    {
        const std::lock_guard lock(pool.mutex);
        const auto found = pool.free.find(size);
        if (found != pool.free.end()) {
            std::uint8_t* block = found->second;
            pool.free.erase(found);
            pool.kept -= size;
            return block;
        }
    }
    return Allocate(size);
}

void BlockPool::Give(std::uint8_t* block, std::size_t size) {
    if (block == nullptr) return;
    if (size < kSmallest) return Free(block);
    size = RoundUp(size);
    Pool& pool = ThePool();
    std::vector<std::uint8_t*> surplus;
    {
        const std::lock_guard lock(pool.mutex);
        pool.free.emplace(size, block);
        pool.kept += size;
        // Largest first: what is kept should be what the session keeps asking for.
        while (pool.kept > kMostKept) {
            const auto last = std::prev(pool.free.end());
            pool.kept -= last->first;
            surplus.push_back(last->second);
            pool.free.erase(last);
        }
    }
    for (std::uint8_t* old : surplus) Free(old);
}

Block::Block(Block&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0)) {}

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
