// Photographs from files to files.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "developer.h"
#include "problem.h"
#include "recipe.h"

namespace Kivo::Tools {

/// The files of a photograph's frames.
class PictureFiles {
  public:
    /// Replaces what was read before.
    Problem Read(std::span<const std::string> paths);
    /// Their bytes stay until the next Read or the end of this object.
    std::span<const Source> Sources() const { return sources_; }

  private:
    std::vector<Osp::Media::EncodedPicture> files_;
    std::vector<Source> sources_;
};

/// From the extension.
Problem FindFormat(const std::string& path, PictureFormat& format);

/// The output is there whole or not at all, and replaces an older one.
Problem WriteFile(const std::string& path, const Osp::Media::EncodedPicture& bytes);

/// Develops the photograph in the files `inputs` into the file `output`, whose extension tells its
/// format.
Problem DevelopFiles(Developer& developer, const Recipe& recipe,
                     std::span<const std::string> inputs, const std::string& output);

}  // namespace Kivo::Tools
