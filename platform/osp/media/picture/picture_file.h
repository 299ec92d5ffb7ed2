// Pictures in files, whatever their format.
#pragma once

#include <string>

#include <osp/base/result.h>
#include <osp/graphics/dimension.h>

#include "osp/base/values/block_pool.h"
#include "osp/media/picture/jpeg_codec.h"
#include "osp/media/picture/pixel_view.h"

/// Paths are real ones. kFileNotFound and kPermissionDenied mean what they say, kInvalidFormat that
/// the file is not a whole JPEG or PNG, as its content tells, kOutOfRange that it is too large,
/// kUnsupported that it is of a kind that is not taken. Any thread.
namespace Osp::Media {

constexpr long kMostFileBytes = 256L << 20;

enum class FileKind { kJpeg, kPng };

/// From the first bytes.
result ReadFileKind(const std::string& path, FileKind& kind);

/// The whole file; `bytes` is reused when its block is large enough. kOutOfRange for a file of more
/// than kMostFileBytes.
result ReadPictureBytes(const std::string& path, EncodedPicture& bytes);

/// Packed pixels; `pixels` is kept when it has exactly the size needed and replaced otherwise.
result DecodePicture(const std::string& path, PixelLayout layout, Base::Block& pixels,
                     Graphics::Dimension& size);

}  // namespace Osp::Media
