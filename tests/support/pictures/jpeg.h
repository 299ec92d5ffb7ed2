// JPEG by the library alone, to check what the program makes of pictures.
#pragma once

#include <string>
#include <turbojpeg.h>

#include "tests/support/pictures/pictures.h"

namespace Kivo::Testing {

/// Fails the test and returns a picture of one pixel when `bytes` is no whole JPEG.
Picture DecodeJpeg(const std::string& bytes);
Picture ReadJpeg(const std::string& path);
/// Quality 95, slow integer DCT; `flags` are more of the library's.
std::string EncodeJpeg(const Picture& picture, TJSAMP subsampling = TJSAMP_420, int flags = 0);
/// The JPEG with another size in its header.
std::string JpegClaiming(std::string jpeg, int width, int height);
/// Whether the file is a JPEG that decodes to its end without a warning.
bool IsWholeJpeg(const std::string& path);

}  // namespace Kivo::Testing
