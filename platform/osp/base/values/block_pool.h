// Recycled memory for frames and pictures.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace Osp::Base {

class ByteBuffer;

/// First touch of fresh pages costs more than the arithmetic done on them, so blocks of picture
/// size are kept when they are given back and handed out again, for the life of the process. Small
/// blocks go straight to the heap. Any thread.
namespace BlockPool {

/// `size` bytes, aligned to 64, content unspecified; never null. Throws std::bad_alloc when there
/// is no memory even after all that was kept has been let go; from then on nothing is kept.
std::uint8_t* Take(std::size_t size);
/// `block` came from Take(size); null is allowed.
void Give(std::uint8_t* block, std::size_t size);

}  // namespace BlockPool

/// A block that goes back by itself.
class Block {
  public:
    Block() = default;
    explicit Block(std::size_t size) : data_(BlockPool::Take(size)), size_(size) {}
    Block(Block&& other) noexcept;
    /// Takes over the buffer's memory, which leaves it unconstructed.
    explicit Block(ByteBuffer&& buffer) noexcept;
    Block& operator=(Block&& other) noexcept;
    ~Block() { BlockPool::Give(data_, size_); }

    /// Makes it a block of exactly this size, another one unless it is that already; what it held
    /// is lost.
    void Fit(std::size_t size);

    std::uint8_t* data() { return data_; }
    const std::uint8_t* data() const { return data_; }
    std::size_t size() const { return size_; }

  private:
    std::uint8_t* data_ = nullptr;
    std::size_t size_ = 0;
};

}  // namespace Osp::Base
