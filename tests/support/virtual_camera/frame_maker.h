// The frames of one mode: the pattern is painted once, and for each frame its number only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "tests/support/virtual_camera/canvas.h"
#include "tests/support/virtual_camera/mode.h"

namespace Osp::Testing {

class FrameMaker {
  public:
    /// Raw rows have `paddingBytes` after them.
    FrameMaker(const Mode& mode, int paddingBytes);

    /// That no frame exceeds.
    std::size_t BufferBytes() const { return bufferBytes_; }
    /// 0 for JPEGs.
    int StrideBytes() const { return isJpeg_ ? 0 : canvas_.strideBytes; }
    /// Once for each buffer, before the first frame goes into it.
    void Prepare(std::uint8_t* buffer) const;
    /// The bytes that it takes.
    std::size_t Draw(std::uint8_t* buffer, unsigned number);

  private:
    std::size_t Compress(std::uint8_t* buffer);

    bool isJpeg_;
    Canvas canvas_;
    std::size_t bufferBytes_;
    std::vector<std::uint8_t> pixels_;  // what becomes JPEGs
    std::unique_ptr<void, int (*)(void*)> compressor_;
};

}  // namespace Osp::Testing
