#include "osp/media/picture/picture_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>

#include "osp/base/owner.h"
#include "osp/io/errno_result.h"
#include "osp/io/file_descriptor.h"
#include "osp/media/picture/png_codec.h"

namespace Osp::Media {

namespace {

using File = Base::Owner<std::FILE, std::fclose>;

/// Without waiting for what is no file: a pipe that nobody writes to.
result Open(const std::string& path, File& file) {
    Io::FileDescriptor descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status;
    if (!descriptor.IsOpen() || fstat(descriptor.Get(), &status) != 0) {
        return Io::ResultOfErrno(errno);
    }
    if (!S_ISREG(status.st_mode)) return result::kInvalidFormat;
    file.reset(fdopen(descriptor.Get(), "rb"));
    if (!file) return Io::ResultOfErrno(errno);
    (void)descriptor.Release();
    return result::kSuccess;
}

long SizeOf(std::FILE* file) {
    if (std::fseek(file, 0, SEEK_END) != 0) return -1;
    const long size = std::ftell(file);
    std::rewind(file);
    return size;
}

}  // namespace

result ReadFileKind(const std::string& path, FileKind& kind) {
    File file;
    const result r = Open(path, file);
    if (Failed(r)) return r;
    std::array<std::uint8_t, 8> start{};
    const std::size_t count = std::fread(start.data(), 1, start.size(), file.get());
    const std::span<const std::uint8_t> read(start.data(), count);
    if (!IsJpeg(read) && !IsPng(read)) return result::kInvalidFormat;
    kind = IsPng(read) ? FileKind::kPng : FileKind::kJpeg;
    return result::kSuccess;
}

result ReadPictureBytes(const std::string& path, EncodedPicture& bytes) {
    File file;
    const result r = Open(path, file);
    if (Failed(r)) return r;
    const long size = SizeOf(file.get());
    if (size < 0) return result::kIo;
    if (size > kMostFileBytes) return result::kOutOfRange;
    bytes.sizeBytes = static_cast<std::size_t>(size);
    bytes.Reserve(bytes.sizeBytes);
    const std::size_t count = std::fread(bytes.block.data(), 1, bytes.sizeBytes, file.get());
    return count == bytes.sizeBytes ? result::kSuccess : result::kIo;
}

result DecodePicture(const std::string& path, PixelLayout layout, Base::Block& pixels,
                     Graphics::Dimension& size) {
    FileKind kind{};
    result r = ReadFileKind(path, kind);
    if (Failed(r)) return r;
    if (kind == FileKind::kJpeg) {
        EncodedPicture bytes;
        r = ReadPictureBytes(path, bytes);
        return Failed(r) ? r : DecodeJpeg(bytes.Bytes(), layout, pixels, size);
    }
    r = ReadPngSize(path, size);
    if (Failed(r)) return r;
    pixels.Fit(PackedSize(size, layout));
    return DecodePng(path, size, layout, pixels.data());
}

}  // namespace Osp::Media
