// Which real folders stand behind the paths that the application uses.
#pragma once

#include <string>
#include <string_view>

#include <osp/base/result.h>
#include <osp/base/string.h>

#include "osp/base/service.h"
#include "osp/io/folder_lock.h"

namespace Osp::Io {

enum class Access { kRead, kWrite };

/// What the platform has to know of the product that it carries.
struct ProductInfo {
    std::string name;               // as which it signs photographs
    std::string pictureFolderName;  // of its folder among the user's pictures
    std::string privateFolderName;  // of its folder among the user's data
};

/// "/Res" is the package's resource folder, read-only. "/Media/Images" is the product's folder
/// among the user's pictures, "/Storagecard" the first writable removable medium. Loop thread only.
class StorageMap : public Service<StorageMap> {
  public:
    struct Options {
        ProductInfo product;
        /// When not empty, everything but "/Res" lies under it: DIR/Media/Images, DIR/Storagecard
        /// if that exists, and the private folder.
        std::string dataFolder;
        std::string resourceFolder;
    };

    explicit StorageMap(const Options& options);

    /// Creates the folders that are missing, keeps the private one to its owner, and removes what
    /// killed writers left. The first failure is returned, but the map works as far as it can.
    /// Without it, nothing is ever created or removed, on memory cards neither.
    result Prepare();

    /// Keeps other processes out of the same storage for the life of this object: kDeviceBusy when
    /// one is there. After Prepare.
    result Lock() { return lock_.Acquire(privateFolder_); }

    /// Whose storage it is.
    const ProductInfo& GetProduct() const { return product_; }
    /// For registry, content database and tokens.
    const std::string& GetPrivateFolder() const { return privateFolder_; }

    /// Where the file or folder with the virtual path `path` lies, whether or not it exists.
    /// kInvalidArgument for a path that is not absolute or has a ".." in it, kFileNotFound outside
    /// the folders above and for a memory card that is not there, kPermissionDenied for kWrite
    /// under "/Res". A failure leaves `realPath` alone.
    result Resolve(const Base::String& path, Access access, std::string& realPath);

  private:
    result ResolveOnCard(std::string_view rest, std::string& realPath);
    std::string FindCard() const;

    ProductInfo product_;
    std::string dataFolder_;
    std::string resourceFolder_;
    std::string imageFolder_;
    std::string privateFolder_;
    bool isPrepared_ = false;
    std::string preparedCard_;  // the card whose image folder has been seen to
    FolderLock lock_;
};

}  // namespace Osp::Io
