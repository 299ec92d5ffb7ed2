#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include <osp/io/directory.h>

#include "osp/base/trace.h"
#include "osp/io/errno_result.h"
#include "osp/io/storage_map.h"

namespace Osp::Io {

namespace {

result FindFolder(const Base::String& path, std::string& realPath) {
    std::string resolved;
    const result r = StorageMap::Current().Resolve(path, Access::kRead, resolved);
    if (Failed(r)) return r;
    std::error_code error;
    if (!std::filesystem::is_directory(resolved, error)) {
        return error ? ResultOfErrno(error.value()) : result::kFileNotFound;
    }
    realPath = std::move(resolved);
    return result::kSuccess;
}

}  // namespace

result Directory::Construct(const Base::String& path) {
    if (!realPath_.empty()) return result::kInvalidState;
    return FindFolder(path, realPath_);
}

DirEnumerator* Directory::ReadN() {
    if (realPath_.empty()) {
        lastResult_ = result::kInvalidState;
        return nullptr;
    }
    std::error_code error;
    std::vector<std::string> names;
    // The whole folder at once, so that a listing that breaks off is not taken for a short one.
    for (std::filesystem::directory_iterator entry(realPath_, error), end; !error && entry != end;
         entry.increment(error)) {
        names.push_back(entry->path().filename().string());
    }
    lastResult_ = error ? ResultOfErrno(error.value()) : result::kSuccess;
    if (error) return nullptr;
    std::ranges::sort(names);
    std::vector<DirEntry> entries;
    entries.reserve(names.size());
    for (const std::string& name : names) entries.push_back(DirEntry(Base::String(name)));
    Base::Trace::Mark("folder-listed");
    return new DirEnumerator(std::move(entries));
}

bool Directory::Exists(const Base::String& path) {
    std::string realPath;
    return Succeeded(FindFolder(path, realPath));
}

}  // namespace Osp::Io
