#include "tests/support/virtual_camera/frame_maker.h"

#include <turbojpeg.h>

namespace Osp::Testing {

namespace {

constexpr TJSAMP kSubsampling = TJSAMP_422;  // what USB cameras send
constexpr int kQuality = 90;

Mode CanvasMode(Mode mode) {
    if (mode.format == PixelFormat::kMjpg) mode.format = PixelFormat::kRgb;
    return mode;
}

}  // namespace

FrameMaker::FrameMaker(const Mode& mode, int paddingBytes)
    : isJpeg_(mode.format == PixelFormat::kMjpg),
      canvas_(CanvasMode(mode), isJpeg_ ? 0 : paddingBytes),
      bufferBytes_(isJpeg_ ? tjBufSize(mode.width, mode.height, kSubsampling)
                           : canvas_.SizeBytes()),
      compressor_(isJpeg_ ? tjInitCompress() : nullptr, tjDestroy) {
    if (!isJpeg_) return;
    pixels_.resize(canvas_.SizeBytes());
    canvas_.PaintPattern(pixels_.data());
}

void FrameMaker::Prepare(std::uint8_t* buffer) const {
    if (!isJpeg_) canvas_.PaintPattern(buffer);
}

std::size_t FrameMaker::Draw(std::uint8_t* buffer, unsigned number) {
    canvas_.PaintNumber(isJpeg_ ? pixels_.data() : buffer, number);
    return isJpeg_ ? Compress(buffer) : bufferBytes_;
}

std::size_t FrameMaker::Compress(std::uint8_t* buffer) {
    unsigned long size = bufferBytes_;
    const int result = tjCompress2(compressor_.get(), pixels_.data(), canvas_.width,
                                   canvas_.strideBytes, canvas_.height, TJPF_RGB, &buffer, &size,
                                   kSubsampling, kQuality, TJFLAG_NOREALLOC);
    return result == 0 ? size : 0;
}

}  // namespace Osp::Testing
