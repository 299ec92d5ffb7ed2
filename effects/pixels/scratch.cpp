#include "effects/pixels/scratch.h"

#include <algorithm>
#include <cassert>

namespace Kivo::Effects {

std::size_t Scratch::CapacityBytes() const {
    std::size_t sum = 0;
    for (const Block& block : blocks_) sum += block.size;
    return sum;
}

void Scratch::Release() {
    assert(mark_.block == 0 && mark_.offset == 0);
    blocks_.clear();
}

std::uint8_t* Scratch::TakeBytes(std::size_t size) {
    size = (size + kAlignment - 1) / kAlignment * kAlignment;
    for (; mark_.block < blocks_.size(); ++mark_.block, mark_.offset = 0) {
        Block& block = blocks_[mark_.block];
        if (block.size - mark_.offset < size) continue;
        std::uint8_t* bytes = block.bytes.get() + mark_.offset;
        mark_.offset += size;
        return bytes;
    }
    const std::size_t blockSize = std::max(size, kSmallestBlock);
    auto* fresh =
        static_cast<std::uint8_t*>(::operator new (blockSize, std::align_val_t{kAlignment}));
    blocks_.push_back({std::unique_ptr<std::uint8_t[], Deleter>(fresh), blockSize});
    mark_.offset = size;
    return fresh;
}

}  // namespace Kivo::Effects
