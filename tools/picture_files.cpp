#include "picture_files.h"

#include <filesystem>
#include <optional>
#include <system_error>

#include "io/safe_file.h"
#include "media/picture_file.h"

namespace Kivo::Tools {

using Osp::Media::EncodedPicture;

namespace {

/// What a failed operation on a file means to the user.
std::string InWords(result r) {
    switch (r) {
        case result::kFileNotFound:
            return "no such file or folder";
        case result::kPermissionDenied:
            return "permission denied";
        case result::kStorageFull:
            return "the disk is full";
        case result::kInvalidFormat:
            return "this is not a regular file, or one of more than 256 MiB";
        default:
            return "input or output error";
    }
}

/// At its end, whatever happened.
struct Unloading {
    Developer& developer;
    ~Unloading() { developer.Unload(); }
};

}  // namespace

Problem PictureFiles::Read(std::span<const std::string> paths) {
    files_.resize(paths.size());
    sources_.clear();
    for (std::size_t i = 0; i < paths.size(); ++i) {
        const result r = Osp::Media::ReadPictureBytes(paths[i], files_[i]);
        if (Osp::Failed(r)) return paths[i] + ": " + InWords(r);
        sources_.push_back({paths[i], files_[i].Bytes()});
    }
    return {};
}

Problem FindFormat(const std::string& path, PictureFormat& format) {
    const std::optional<PictureFormat> found = FormatOfName(path);
    if (!found) return path + ": the extension is none of .jpg, .jpeg, .png and .ppm";
    format = *found;
    return {};
}

Problem WriteFile(const std::string& path, const EncodedPicture& bytes) {
    const result r = Osp::Io::WriteFileSafely(path, bytes.Bytes());
    if (Osp::Succeeded(r)) return {};
    std::error_code ignored;
    return path + ": " +
           (std::filesystem::is_directory(path, ignored) ? "this is a folder" : InWords(r));
}

Problem DevelopFiles(Developer& developer, const Recipe& recipe,
                     std::span<const std::string> inputs, const std::string& output) {
    PictureFormat format{};
    PictureFiles files;
    const Unloading unloading{developer};  // before the files go
    EncodedPicture developed;
    Problem problem = FindFormat(output, format);
    if (problem.empty()) problem = files.Read(inputs);
    if (problem.empty()) problem = developer.Load(files.Sources());
    if (problem.empty()) problem = developer.Develop(recipe, format, developed);
    return problem.empty() ? WriteFile(output, developed) : problem;
}

}  // namespace Kivo::Tools
