// Software conversion of preview frames, for the MIX blend and the front camera's photographs.
#pragma once

#include <cstddef>
#include <cstdint>

#include "effects/pixels/pixels.h"

namespace Kivo {

/// Size of a frame: a luma plane of width x height, then two chroma planes of half the width and
/// height. Both sizes are even.
constexpr std::size_t PreviewFrameBytes(int width, int height) {
    return std::size_t{3} * static_cast<std::size_t>(width) * static_cast<std::size_t>(height) / 2;
}

/// Three bytes a pixel in the order blue, green, red of a planar 4:2:0 frame, whose first chroma
/// plane is read as Cr and whose second as Cb.
void ConvertPreview(const std::uint8_t* frame, Effects::Pixels converted);

/// The way back to planar 4:2:0, Cr plane first. Where `firstFrame` has a picture, every byte is
/// first averaged with the byte at the same position there; in a first frame of another size the
/// same position is the proportional one. `frame` has room for PreviewFrameBytes.
void EncodePreview(Effects::ConstPixels converted, Effects::ConstPixels firstFrame,
                   std::uint8_t* frame);

}  // namespace Kivo
