// The photograph that the album shows.
#pragma once

#include <string>

#include <osp/base/string.h>
#include <osp/graphics/bitmap.h>
#include <osp/graphics/dimension.h>

namespace Kivo {

/// What is known of a photograph without decoding it.
struct AlbumPhoto {
    Osp::Base::String path;  // empty: none
    std::string description;
    Osp::Graphics::Dimension size;
    long long fileSizeBytes = 0;
    long long dateMs = 0;  // of the file, since 1970 UTC
    bool isBroken = false;
    bool isHdr = false;

    /// Whether the file is the same as it was then.
    bool IsSameFileAs(const AlbumPhoto& other) const {
        return path == other.path && fileSizeBytes == other.fileSizeBytes && dateMs == other.dateMs;
    }
};

/// Looks at the file and registers it. What is too small for a photograph, is not there or cannot
/// be registered, is broken.
AlbumPhoto ReadPhoto(const Osp::Base::String& path);

}  // namespace Kivo
