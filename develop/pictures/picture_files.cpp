#include "develop/pictures/picture_files.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "osp/io/errno_result.h"
#include "osp/io/safe_file.h"
#include "osp/media/picture/picture_file.h"

namespace Kivo::Tools {

using Osp::Media::EncodedPicture;
namespace fs = std::filesystem;

namespace {

constexpr const char* kStandardInput = "standard input";
constexpr const char* kStandardOutput = "standard output";
constexpr int kMostLinks = 40;  // as the system follows

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
            return "this is not a regular file";
        case result::kOutOfRange:
            return "this is a file of more than 256 MiB";
        default:
            return "input or output error";
    }
}

/// At its end, whatever happened.
struct Unloading {
    Developer& developer;
    ~Unloading() { developer.Unload(); }
};

result ReadStandardInput(EncodedPicture& picture) {
    constexpr std::size_t kChunk = 1U << 20;
    std::vector<std::uint8_t> bytes;
    for (std::size_t count = kChunk; count == kChunk;) {
        const std::size_t before = bytes.size();
        if (before > Osp::Media::kMostFileBytes) return result::kOutOfRange;
        bytes.resize(before + kChunk);
        count = std::fread(bytes.data() + before, 1, kChunk, stdin);
        bytes.resize(before + count);
    }
    if (std::ferror(stdin) != 0) return result::kIo;
    picture.Reserve(bytes.size());
    picture.sizeBytes = bytes.size();
    std::ranges::copy(bytes, picture.block.data());
    return result::kSuccess;
}

Outcome WriteStandardOutput(const EncodedPicture& picture) {
    const std::size_t count = std::fwrite(picture.block.data(), 1, picture.sizeBytes, stdout);
    if (count == picture.sizeBytes && std::fflush(stdout) == 0) return {};
    return {std::string(kStandardOutput) + ": " + InWords(Osp::Io::ResultOfErrno(errno))};
}

}  // namespace

Problem PictureFiles::Read(std::span<const std::string> paths) {
    files_.resize(paths.size());
    sources_.clear();
    for (std::size_t i = 0; i < paths.size(); ++i) {
        const bool isStream = paths[i] == kStandardStream;
        const std::string name = isStream ? kStandardInput : paths[i];
        const result r = isStream ? ReadStandardInput(files_[i])
                                  : Osp::Media::ReadPictureBytes(paths[i], files_[i]);
        if (Osp::Failed(r)) return name + ": " + InWords(r);
        sources_.push_back({name, files_[i].Bytes()});
    }
    return {};
}

FileIds IdsOf(std::span<const std::string> paths) {
    FileIds ids;
    for (const std::string& path : paths) {
        struct stat status;
        if (stat(path.c_str(), &status) == 0) ids.insert({status.st_dev, status.st_ino});
    }
    return ids;
}

Problem CheckOutput(const std::string& path, const FileIds& inputs) {
    if (path == kStandardStream) {
        return isatty(STDOUT_FILENO) == 0 ? Problem()
                                          : std::string(kStandardOutput) + ": this is a terminal";
    }
    if (!FormatOfName(path)) return path + ": the extension is none of .jpg, .jpeg, .png and .ppm";
    for (const auto& id : IdsOf({&path, 1})) {
        if (inputs.contains(id)) return path + ": this is one of the inputs; it would be lost";
    }
    return {};
}

Problem FindFormat(const std::string& path, const Source& input, PictureFormat& format) {
    const std::optional<PictureFormat> found =
        path == kStandardStream ? FormatOfContent(input.bytes) : FormatOfName(path);
    if (!found) return input.name + ": this is not a JPEG, PNG or binary PPM picture";
    format = *found;
    return {};
}

Problem FollowLinks(std::string& path) {
    fs::path target = path;
    std::error_code error;
    for (int links = 0; fs::is_symlink(fs::symlink_status(target, error)); ++links) {
        if (links == kMostLinks) return path + ": too many symbolic links";
        const fs::path next = fs::read_symlink(target, error);
        if (error) return path + ": " + error.message();
        target = target.parent_path() / next;
    }
    path = target.string();
    return {};
}

Outcome WriteFile(const std::string& path, const EncodedPicture& bytes) {
    if (path == kStandardStream) return WriteStandardOutput(bytes);
    std::string target = path;
    const Problem problem = FollowLinks(target);
    if (!problem.empty()) return {problem};
    const result r = Osp::Io::WriteFileSafely(target, bytes.Bytes());
    if (Osp::Succeeded(r)) return {};
    std::error_code ignored;
    const bool isFolder = fs::is_directory(target, ignored);
    return {path + ": " + (isFolder ? "this is a folder" : InWords(r)), r == result::kStorageFull};
}

Outcome DevelopFiles(Developer& developer, const Recipe& recipe,
                     std::span<const std::string> inputs, const FileIds& originals,
                     const std::string& output) {
    PictureFormat format{};
    PictureFiles files;
    const Unloading unloading{developer};  // before the files go
    EncodedPicture developed;
    Problem problem = CheckOutput(output, originals);
    if (problem.empty()) problem = files.Read(inputs);
    if (problem.empty()) problem = FindFormat(output, files.Sources()[0], format);
    if (problem.empty()) problem = developer.Load(files.Sources());
    if (!problem.empty()) return {problem};
    const Metadata metadata = developer.MakeMetadata(recipe, format);
    if (developer.HasRead()) files = {};
    problem = developer.Develop(recipe, format, metadata, developed);
    if (!problem.empty()) return {problem};
    Outcome outcome = WriteFile(output, developed);
    outcome.warnings = developer.Warnings();
    return outcome;
}

}  // namespace Kivo::Tools
