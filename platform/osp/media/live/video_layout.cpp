#include "osp/media/live/video_source.h"
#include "osp/media/picture/pixel_view.h"

namespace Osp::Media {

bool LayOut(VideoFormat format, const Graphics::Dimension& size, int strideBytes,
            std::span<const std::uint8_t> data, VideoPicture& picture) {
    const auto [width, height] = size;
    if (!IsAcceptableSize(width, height)) return false;
    picture = {format, size, {}, {}};
    if (format == VideoFormat::kMjpeg) {
        picture.mjpeg = data;
        return !data.empty();
    }
    const int chromaWidth = (width + 1) / 2;
    const int chromaHeight = (height + 1) / 2;
    const bool isPacked = format == VideoFormat::kYuy2;
    const int rowBytes = isPacked ? 4 * chromaWidth : width;
    const int stride = strideBytes == 0 ? rowBytes : strideBytes;
    if (stride < rowBytes || stride > 8 * kMostPixelsASide) return false;
    // Planar chroma rows are half as far apart as those of luma, interleaved ones as far.
    const int chromaStride = format == VideoFormat::kI420 ? (stride + 1) / 2 : stride;
    const int chromaRowBytes = format == VideoFormat::kI420 ? chromaWidth : 2 * chromaWidth;
    if (!isPacked && chromaStride < chromaRowBytes) return false;
    const auto whole = [](long long rowStride, int rows) {
        return static_cast<std::size_t>(rowStride * rows);
    };
    const std::size_t luma = whole(stride, height);
    const std::size_t chroma = whole(chromaStride, chromaHeight);
    // The last row may end with its last pixel.
    const auto needed = [&](std::size_t before, int lastStride, int rows, int lastRowBytes) {
        return before + whole(lastStride, rows - 1) + static_cast<std::size_t>(lastRowBytes);
    };
    picture.planes[0] = {data.data(), stride};
    if (isPacked) return needed(0, stride, height, rowBytes) <= data.size();
    const std::size_t before = format == VideoFormat::kI420 ? luma + chroma : luma;
    if (needed(before, chromaStride, chromaHeight, chromaRowBytes) > data.size()) return false;
    picture.planes[1] = {data.data() + luma, chromaStride};
    if (format == VideoFormat::kI420) picture.planes[2] = {data.data() + before, chromaStride};
    return true;
}

}  // namespace Osp::Media
