#include "osp/io/storage_map.h"

#include <cassert>
#include <cerrno>
#include <filesystem>
#include <glib.h>
#include <glib/gstdio.h>
#include <sys/stat.h>
#include <system_error>

#include "osp/io/errno_result.h"
#include "osp/io/removable_medium.h"
#include "osp/io/safe_file.h"

namespace Osp::Io {

namespace {

constexpr std::string_view kResourceRoot = "/Res";
constexpr std::string_view kImageRoot = "/Media/Images";
constexpr std::string_view kCardRoot = "/Storagecard";
constexpr int kPrivateMode = 0700;
constexpr int kPublicMode = 0777;  // less the process's mask

result CreateFolder(const std::string& folder, int mode) {
    return g_mkdir_with_parents(folder.c_str(), mode) == 0 ? result::kSuccess
                                                           : ResultOfErrno(errno);
}

result CreatePrivateFolder(const std::string& folder) {
    const result r = CreateFolder(folder, kPrivateMode);
    struct stat status;
    if (Succeeded(r) && stat(folder.c_str(), &status) == 0 && (status.st_mode & 0077) != 0) {
        // In vain where the file system knows no modes; the folder is the user's choice then.
        g_chmod(folder.c_str(), kPrivateMode);
    }
    return r;
}

/// xdg-user-dir's own answer where nothing is configured is the home folder.
std::string PicturesFolder() {
    const char* configured = g_get_user_special_dir(G_USER_DIRECTORY_PICTURES);
    return configured != nullptr ? configured : g_get_home_dir();
}

/// The path without empty and "." parts, or "" when it is not acceptable.
std::string Normalize(const std::string& path) {
    if (!path.starts_with('/') || path.find('\0') != std::string::npos) return "";
    std::string normal;
    for (const auto& part : std::filesystem::path(path).relative_path()) {
        if (part == "..") return "";
        if (!part.empty() && part != ".") normal.append("/").append(part);
    }
    return normal.empty() ? "/" : normal;
}

/// Whether `path` is `root` or lies in it; then `rest` is what follows.
bool IsUnder(std::string_view path, std::string_view root, std::string_view& rest) {
    if (!path.starts_with(root)) return false;
    rest = path.substr(root.size());
    return rest.empty() || rest.front() == '/';
}

}  // namespace

StorageMap::StorageMap(const Options& options)
    : product_(options.product),
      dataFolder_(options.dataFolder),
      resourceFolder_(options.resourceFolder) {
    assert(!product_.pictureFolderName.empty() && !product_.privateFolderName.empty());
    const bool onDesktop = dataFolder_.empty();
    imageFolder_ = onDesktop ? PicturesFolder() + "/" + product_.pictureFolderName
                             : dataFolder_ + std::string(kImageRoot);
    privateFolder_ =
        (onDesktop ? g_get_user_data_dir() : dataFolder_) + "/" + product_.privateFolderName;
}

result StorageMap::Prepare() {
    isPrepared_ = true;
    const result images = CreateFolder(imageFolder_, kPublicMode);
    const result own = CreatePrivateFolder(privateFolder_);
    RemoveStaleTemporaries(imageFolder_);
    RemoveStaleTemporaries(privateFolder_);
    return Failed(images) ? images : own;
}

result StorageMap::Resolve(const Base::String& path, Access access, std::string& realPath) {
    const std::string normal = Normalize(path.ToUtf8());
    if (normal.empty()) return result::kInvalidArgument;
    std::string_view rest;
    if (IsUnder(normal, kResourceRoot, rest)) {
        if (access == Access::kWrite) return result::kPermissionDenied;
        realPath = resourceFolder_ + std::string(rest);
        return result::kSuccess;
    }
    if (IsUnder(normal, kImageRoot, rest)) {
        realPath = imageFolder_ + std::string(rest);
        return result::kSuccess;
    }
    return IsUnder(normal, kCardRoot, rest) ? ResolveOnCard(rest, realPath) : result::kFileNotFound;
}

result StorageMap::ResolveOnCard(std::string_view rest, std::string& realPath) {
    const std::string card = FindCard();
    if (isPrepared_ && card != preparedCard_) {
        preparedCard_ = card;
        const std::string images = card + std::string(kImageRoot);
        // Whether this went well shows when the folder is used.
        if (!card.empty() && Succeeded(CreateFolder(images, kPublicMode))) {
            RemoveStaleTemporaries(images);
        }
    }
    if (card.empty()) return result::kFileNotFound;
    realPath = card + std::string(rest);
    return result::kSuccess;
}

std::string StorageMap::FindCard() const {
    if (dataFolder_.empty()) return FindRemovableMedium();
    const std::string card = dataFolder_ + std::string(kCardRoot);
    std::error_code error;
    return std::filesystem::is_directory(card, error) ? card : "";
}

}  // namespace Osp::Io
