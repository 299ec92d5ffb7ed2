// Photographs from files to files.
#pragma once

#include <set>
#include <span>
#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

#include "develop/developer.h"
#include "develop/problem.h"
#include "develop/recipe.h"

namespace Kivo::Tools {

/// As an input standard input, as an output standard output.
inline constexpr const char* kStandardStream = "-";

/// What became of a photograph.
struct Outcome {
    Problem problem;
    bool isDiskFull = false;  // that is the problem
    std::vector<Problem> warnings = {};
};

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

/// Files, whatever their names.
using FileIds = std::set<std::pair<dev_t, ino_t>>;
FileIds IdsOf(std::span<const std::string> paths);

/// Whether a picture may go to this path: its extension tells a format, or it is standard output,
/// and it is none of the files `inputs`, which would be lost.
Problem CheckOutput(const std::string& path, const FileIds& inputs);

/// The format of an output that has passed the check: that of its extension, on standard output
/// that of `input`.
Problem FindFormat(const std::string& path, const Source& input, PictureFormat& format);

/// Where a symbolic link leads to, also when nothing is there yet; other paths are left alone.
Problem FollowLinks(std::string& path);

/// The output is there whole or not at all, and replaces an older one. A symbolic link stays one,
/// and its target is written.
Outcome WriteFile(const std::string& path, const Osp::Media::EncodedPicture& bytes);

/// Develops the photograph in the files `inputs` into the file `output`, whose extension tells its
/// format and which is none of `originals`.
Outcome DevelopFiles(Developer& developer, const Recipe& recipe,
                     std::span<const std::string> inputs, const FileIds& originals,
                     const std::string& output);

}  // namespace Kivo::Tools
