// Work memory of the kernels, kept from one photograph to the next.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <span>
#include <vector>

namespace Kivo::Effects {

/// A stack of blocks: what a Scope takes is given back when it ends, and the memory stays for the
/// next one. Once it has served the largest job, nothing is allocated any more, because first touch
/// of fresh pages costs more than the arithmetic done on them. One thread at a time.
class Scratch {
  public:
    class Scope {
      public:
        explicit Scope(Scratch& scratch) : scratch_(scratch), mark_(scratch.mark_) {}
        ~Scope() { scratch_.mark_ = mark_; }
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

        /// `count` elements, aligned to 64 bytes, content unspecified, valid until the scope ends.
        template <class T>
        std::span<T> Take(std::size_t count) {
            return {reinterpret_cast<T*>(scratch_.TakeBytes(count * sizeof(T))), count};
        }

      private:
        Scratch& scratch_;
        const struct Mark {
            std::size_t block = 0;
            std::size_t offset = 0;
        } mark_;
        friend class Scratch;
    };

    Scratch() = default;
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    /// What is held for reuse.
    std::size_t CapacityBytes() const;
    /// Gives it back. No scope is open.
    void Release();

  private:
    static constexpr std::size_t kAlignment = 64;
    static constexpr std::size_t kSmallestBlock = 256 * 1024;
    struct Deleter {
        void operator()(std::uint8_t* bytes) const {
            ::operator delete (bytes, std::align_val_t{kAlignment});
        }
    };
    struct Block {
        std::unique_ptr<std::uint8_t[], Deleter> bytes;
        std::size_t size = 0;
    };

    std::uint8_t* TakeBytes(std::size_t size);

    std::vector<Block> blocks_;
    Scope::Mark mark_;
};

}  // namespace Kivo::Effects
