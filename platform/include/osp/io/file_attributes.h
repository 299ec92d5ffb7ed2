// What the storage knows of a file besides its content.
#pragma once

namespace Osp::Io {

class FileAttributes {
  public:
    FileAttributes() = default;

    /// In bytes.
    long long GetFileSize() const { return fileSizeBytes_; }
    /// In milliseconds since 1970 UTC.
    long long GetLastModifiedMs() const { return lastModifiedMs_; }

  private:
    friend class File;

    FileAttributes(long long fileSizeBytes, long long lastModifiedMs)
        : fileSizeBytes_(fileSizeBytes), lastModifiedMs_(lastModifiedMs) {}

    long long fileSizeBytes_ = 0;
    long long lastModifiedMs_ = 0;
};

}  // namespace Osp::Io
