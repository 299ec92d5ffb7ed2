#include "osp/media/live/mjpeg_decoder.h"

#include <cstring>
#include <libyuv/convert.h>
#include <new>
#include <turbojpeg.h>

#include "osp/media/picture/pixel_view.h"

// Webcams send 4:2:2 mostly, some 4:2:0, and leave out the Huffman tables, which the library puts
// in by itself. A picture with a damaged byte decodes to something all the same, so the library's
// warnings count as damage here: the next picture is a thirtieth of a second away. Stray bytes
// between segments do not: some devices pad every picture so.

namespace Osp::Media {

namespace {

struct Header {
    int width = 0;
    int height = 0;
    int subsampling = 0;
};

bool ReadHeader(tjhandle decompressor, std::span<const std::uint8_t> jpeg, Header& header) {
    int colours = 0;
    return tjDecompressHeader3(decompressor, jpeg.data(), jpeg.size(), &header.width,
                               &header.height, &header.subsampling, &colours) == 0 &&
           (colours == TJCS_YCbCr || colours == TJCS_GRAY) &&
           IsAcceptableSize(header.width, header.height);
}

/// Whether the library's last complaint leaves every row whole. It tells by its words alone.
bool IsHarmless(tjhandle decompressor) {
    return tjGetErrorCode(decompressor) == TJERR_WARNING &&
           std::strstr(tjGetErrorStr2(decompressor), "extraneous bytes") != nullptr;
}

}  // namespace

bool ReadMjpegSize(std::span<const std::uint8_t> jpeg, Graphics::Dimension& size) {
    const tjhandle decompressor = tjInitDecompress();
    if (decompressor == nullptr) throw std::bad_alloc();
    Header header;
    const bool isRead = ReadHeader(decompressor, jpeg, header);
    tjDestroy(decompressor);
    if (isRead) size = {header.width, header.height};
    return isRead;
}

struct MjpegDecoder::Sizes {
    Graphics::Dimension size;
    int subsampling = 0;
    std::array<unsigned char*, 3> planes{};
    std::array<int, 3> strides{};
};

MjpegDecoder::MjpegDecoder() : decompressor_(tjInitDecompress()) {
    if (decompressor_ == nullptr) throw std::bad_alloc();
}

MjpegDecoder::~MjpegDecoder() {
    tjDestroy(decompressor_);
}

bool MjpegDecoder::Decode(std::span<const std::uint8_t> jpeg, int shrink, PlanarView& view) {
    view = {};
    Header header;
    if (!ReadHeader(decompressor_, jpeg, header)) return false;
    const tjscalingfactor factor{1, shrink};
    Sizes sizes;
    sizes.size = {TJSCALED(header.width, factor), TJSCALED(header.height, factor)};
    sizes.subsampling = header.subsampling;
    if (sizes.size.width < 2 || sizes.size.height < 2) return false;
    const int components = header.subsampling == TJSAMP_GRAY ? 1 : 3;
    std::array<std::size_t, 3> offsets{};
    std::size_t total = 0;
    for (int i = 0; i < components; ++i) {
        const auto at = static_cast<std::size_t>(i);
        sizes.strides[at] = tjPlaneWidth(i, sizes.size.width, header.subsampling);
        offsets[at] = total;
        total += tjPlaneSizeYUV(i, sizes.size.width, sizes.strides[at], sizes.size.height,
                                header.subsampling);
    }
    planes_.Fit(total);
    for (std::size_t i = 0; i < static_cast<std::size_t>(components); ++i) {
        sizes.planes[i] = planes_.data() + offsets[i];
    }
    if (tjDecompressToYUVPlanes(decompressor_, jpeg.data(), jpeg.size(), sizes.planes.data(),
                                sizes.size.width, sizes.strides.data(), sizes.size.height,
                                TJFLAG_ACCURATEDCT) != 0 &&
        !IsHarmless(decompressor_)) {
        return false;
    }
    Join(sizes, view);
    return true;
}

// To 4:2:0 with even sides; an odd last column or row is left out.
void MjpegDecoder::Join(const Sizes& sizes, PlanarView& view) {
    const Graphics::Dimension& size = sizes.size;
    const int subsampling = sizes.subsampling;
    const auto& planes = sizes.planes;
    const auto& strides = sizes.strides;
    const Graphics::Dimension even{size.width & ~1, size.height & ~1};
    if (subsampling == TJSAMP_420) {
        view = {{VideoPlane{planes[0], strides[0]}, VideoPlane{planes[1], strides[1]},
                 VideoPlane{planes[2], strides[2]}},
                even,
                true};
        return;
    }
    joined_.Fit(even);
    const auto convert = [&](auto* converter) {
        converter(planes[0], strides[0], planes[1], strides[1], planes[2], strides[2],
                  joined_.Plane(0), joined_.Stride(0), joined_.Plane(1), joined_.Stride(1),
                  joined_.Plane(2), joined_.Stride(2), even.width, even.height);
    };
    if (subsampling == TJSAMP_422) {
        convert(libyuv::I422ToI420);
    } else if (subsampling == TJSAMP_444) {
        convert(libyuv::I444ToI420);
    } else {
        // Grey, and what no camera sends: its light without its colours.
        libyuv::I400ToI420(planes[0], strides[0], joined_.Plane(0), joined_.Stride(0),
                           joined_.Plane(1), joined_.Stride(1), joined_.Plane(2), joined_.Stride(2),
                           even.width, even.height);
    }
    view = joined_.View(true);
}

}  // namespace Osp::Media
