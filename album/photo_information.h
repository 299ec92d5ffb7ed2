// What the album tells about a photograph.
#pragma once

#include <string>

#include <osp/graphics/dimension.h>

namespace Kivo {

/// Whether the description that the photograph was stored with tells of HDR.
bool TellsOfHdr(const std::string& description);

/// What comes before the comma: camera type and effect, "DSLR (Sepia)". The whole description where
/// there is no comma.
std::string TitleOf(const std::string& description);

/// Zoom and size: "2X 1600 x 960". Only the size where the description has nothing after a comma.
std::string SizeTextOf(const std::string& description, const Osp::Graphics::Dimension& size);

}  // namespace Kivo
