// Packed pixels processed as flat bytes, with constants that repeat every three bytes.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "effects/pixels/vectorised.h"

namespace Kivo::Effects {

/// A whole number of pixels and of vectors of every width, so that the position tells the channel
/// and no bytes have to be shuffled.
inline constexpr std::size_t kPatternBytes = 192;

/// What a kernel's steps work on in turn: so many bytes that what one step has stored has reached
/// the cache when the next one loads it at another alignment.
inline constexpr std::size_t kBlockBytes = 4 * kPatternBytes;

/// A constant for each byte of a pattern, by channel.
template <class T>
struct alignas(64) ChannelPattern {
    std::array<T, kPatternBytes> values{};

    constexpr ChannelPattern(T red, T green, T blue) {
        const T channels[3] = {red, green, blue};
        for (std::size_t i = 0; i < kPatternBytes; ++i) values[i] = channels[i % 3];
    }
    constexpr T operator[](std::size_t i) const { return values[i]; }
};

inline constexpr ChannelPattern<std::uint8_t> kFirstOfPixel{0xFF, 0, 0};

/// a - b, but not below 0. With a conditional expression, which the vectoriser takes for a maximum
/// where it does not see through std::max; in 16 bits, which doubles what a vector holds.
[[gnu::always_inline]] inline std::uint16_t SaturatingDifference(std::uint16_t a, std::uint16_t b) {
    return static_cast<std::uint16_t>((a > b ? a : b) - b);
}

/// Copies the first byte of each pixel over the other two. `bytes` holds a block after two bytes of
/// zero.
KIVO_INLINE void SpreadFirstOfPixel(const std::uint8_t* bytes, std::uint8_t* out) {
    for (std::size_t i = 0; i < kBlockBytes; ++i) {
        out[i] = static_cast<std::uint8_t>(bytes[i + 2] | bytes[i + 1] | bytes[i]);
    }
}

/// Calls Block::Run(in, out, args...) for every block of `count` bytes; the last, shorter one is
/// completed with zeros. `in` may be `out`.
template <class Block>
struct EveryBlock {
    template <class... Args>
    KIVO_INLINE void Run(const std::uint8_t* in, std::uint8_t* out, std::size_t count,
                         Args... args) {
        std::size_t at = 0;
        for (; at + kBlockBytes <= count; at += kBlockBytes) Block::Run(in + at, out + at, args...);
        if (at == count) return;
        std::uint8_t rest[kBlockBytes] = {};
        std::memcpy(rest, in + at, count - at);
        Block::Run(rest, rest, args...);
        std::memcpy(out + at, rest, count - at);
    }
};

/// Runs a kernel of blocks over rows of a picture; they are one run of bytes.
template <class Block, class Source, class Destination, class... Args>
void RunOverRows(Source source, Destination destination, int first, int last, Args... args) {
    if (first >= last) return;
    RunVectorised<EveryBlock<Block>>(
        source.Row(first), destination.Row(first),
        static_cast<std::size_t>(source.StrideBytes() * (last - first)), args...);
}

}  // namespace Kivo::Effects
