#include "tests/support/virtual_camera/canvas.h"

#include <algorithm>
#include <cassert>

namespace Osp::Testing {

namespace {

// Puts `count` times the bytes of `unit` into each of the rows.
template <std::size_t kSize>
void FillRows(std::uint8_t* first, int strideBytes, int rows, int count,
              const std::array<std::uint8_t, kSize>& unit) {
    for (int row = 0; row < rows; ++row) {
        std::uint8_t* to = first + static_cast<std::ptrdiff_t>(row) * strideBytes;
        for (int i = 0; i < count; ++i) to = std::copy(unit.begin(), unit.end(), to);
    }
}

using Filler = void (*)(const Canvas&, std::uint8_t*, const PatternArea&, const BarColour&);

void FillLuma(const Canvas& canvas, std::uint8_t* bytes, const PatternArea& area,
              const BarColour& colour) {
    FillRows<1>(bytes + area.y * canvas.strideBytes + area.x, canvas.strideBytes, area.height,
                area.width, {colour.luma});
}

void FillI420(const Canvas& canvas, std::uint8_t* bytes, const PatternArea& area,
              const BarColour& colour) {
    FillLuma(canvas, bytes, area, colour);
    const int stride = canvas.strideBytes / 2;
    std::uint8_t* plane = bytes + canvas.strideBytes * canvas.height;
    for (const std::uint8_t value : {colour.blueDifference, colour.redDifference}) {
        FillRows<1>(plane + area.y / 2 * stride + area.x / 2, stride, area.height / 2,
                    area.width / 2, {value});
        plane += stride * canvas.height / 2;
    }
}

void FillNv12(const Canvas& canvas, std::uint8_t* bytes, const PatternArea& area,
              const BarColour& colour) {
    FillLuma(canvas, bytes, area, colour);
    std::uint8_t* const plane = bytes + canvas.strideBytes * canvas.height;
    FillRows<2>(plane + area.y / 2 * canvas.strideBytes + area.x, canvas.strideBytes,
                area.height / 2, area.width / 2, {colour.blueDifference, colour.redDifference});
}

void FillYuy2(const Canvas& canvas, std::uint8_t* bytes, const PatternArea& area,
              const BarColour& colour) {
    FillRows<4>(bytes + area.y * canvas.strideBytes + area.x * 2, canvas.strideBytes, area.height,
                area.width / 2,
                {colour.luma, colour.blueDifference, colour.luma, colour.redDifference});
}

void FillRgb(const Canvas& canvas, std::uint8_t* bytes, const PatternArea& area,
             const BarColour& colour) {
    FillRows<3>(bytes + area.y * canvas.strideBytes + area.x * 3, canvas.strideBytes, area.height,
                area.width, {colour.red, colour.green, colour.blue});
}

struct RawFormat {
    PixelFormat format;
    int pixelBytes;  // of the first plane
    int halfPlanes;  // bytes of the picture as halves of the first plane
    Filler fill;
};

constexpr RawFormat kRawFormats[] = {
    {PixelFormat::kI420, 1, 3, FillI420},
    {PixelFormat::kNv12, 1, 3, FillNv12},
    {PixelFormat::kYuy2, 2, 2, FillYuy2},
    {PixelFormat::kRgb, 3, 2, FillRgb},
};

const RawFormat& RawFormatOf(PixelFormat format) {
    const auto* const found = std::ranges::find(kRawFormats, format, &RawFormat::format);
    assert(found != std::end(kRawFormats));
    return *found;
}

}  // namespace

Canvas::Canvas(const Mode& mode, int paddingBytes)
    : format(mode.format),
      width(mode.width),
      height(mode.height),
      strideBytes(mode.width * RawFormatOf(mode.format).pixelBytes + paddingBytes) {
    assert(paddingBytes >= 0 && paddingBytes % 2 == 0);
}

std::size_t Canvas::SizeBytes() const {
    return static_cast<std::size_t>(strideBytes) * static_cast<std::size_t>(height) *
           static_cast<std::size_t>(RawFormatOf(format).halfPlanes) / 2;
}

void Canvas::Fill(std::uint8_t* bytes, const PatternArea& area, Bar bar) const {
    assert((area.x | area.y | area.width | area.height) % 2 == 0);
    assert(area.x >= 0 && area.x + area.width <= width);
    assert(area.y >= 0 && area.y + area.height <= height);
    RawFormatOf(format).fill(*this, bytes, area, kBarColours[bar]);
}

void Canvas::PaintPattern(std::uint8_t* bytes) const {
    for (int bar = 0; bar < kBarCount; ++bar) {
        Fill(bytes, BarArea(bar, width, height), static_cast<Bar>(bar));
    }
    for (const bool isRight : {false, true}) {
        Fill(bytes, MarkArea(isRight, width, height), kBlack);
        Fill(bytes, MarkSquare(isRight, width, height), isRight ? kRed : kWhite);
    }
}

void Canvas::PaintNumber(std::uint8_t* bytes, unsigned number) const {
    for (int block = 0; block < kCodeBits; ++block) {
        const bool isSet = (number >> (kCodeBits - 1 - block) & 1) != 0;
        Fill(bytes, CodeArea(block, width, height), isSet ? kWhite : kBlack);
    }
}

}  // namespace Osp::Testing
