#include "tests/support/pictures/jpeg.h"

#include <gtest/gtest.h>

#include "osp/base/owner.h"
#include "tests/support/temporary_folder.h"

namespace Kivo::Testing {

namespace {

using Handle = Osp::Base::Owner<void, tjDestroy>;

const unsigned char* Data(const std::string& bytes) {
    return reinterpret_cast<const unsigned char*>(bytes.data());
}

/// Why `bytes` is no whole JPEG; empty when it is one.
std::string Decode(const std::string& bytes, Picture& picture) {
    const Handle handle(tjInitDecompress());
    int width = 0;
    int height = 0;
    int subsampling = 0;
    int colours = 0;
    if (tjDecompressHeader3(handle.get(), Data(bytes), bytes.size(), &width, &height, &subsampling,
                            &colours) != 0) {
        return tjGetErrorStr2(handle.get());
    }
    picture = Picture(width, height);
    if (tjDecompress2(handle.get(), Data(bytes), bytes.size(), picture.bytes.data(), width, 0,
                      height, TJPF_RGB, TJFLAG_ACCURATEDCT | TJFLAG_STOPONWARNING) != 0) {
        return tjGetErrorStr2(handle.get());
    }
    return "";
}

}  // namespace

Picture DecodeJpeg(const std::string& bytes) {
    Picture picture(1, 1);
    const std::string error = Decode(bytes, picture);
    EXPECT_EQ(error, "");
    return picture;
}

Picture ReadJpeg(const std::string& path) {
    return DecodeJpeg(Osp::Testing::ReadText(path));
}

std::string EncodeJpeg(const Picture& picture, TJSAMP subsampling, int flags) {
    const Handle handle(tjInitCompress());
    unsigned char* data = nullptr;
    unsigned long size = 0;
    EXPECT_EQ(tjCompress2(handle.get(), picture.bytes.data(), picture.width, 0, picture.height,
                          TJPF_RGB, &data, &size, subsampling, 95, TJFLAG_ACCURATEDCT | flags),
              0);
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    tjFree(data);
    return bytes;
}

std::string JpegClaiming(std::string jpeg, int width, int height) {
    const std::size_t frame = jpeg.find("\xFF\xC0");
    EXPECT_NE(frame, std::string::npos);
    const char size[] = {static_cast<char>(height >> 8), static_cast<char>(height),
                         static_cast<char>(width >> 8), static_cast<char>(width)};
    return jpeg.replace(frame + 5, sizeof size, size, sizeof size);
}

bool IsWholeJpeg(const std::string& path) {
    Picture picture(1, 1);
    return Decode(Osp::Testing::ReadText(path), picture).empty();
}

}  // namespace Kivo::Testing
