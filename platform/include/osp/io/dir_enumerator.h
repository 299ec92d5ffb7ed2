// A walk over the entries of a folder.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include <osp/base/object.h>
#include <osp/base/result.h>
#include <osp/io/dir_entry.h>

namespace Osp::Io {

/// Walks over what the folder held when it was read, in the order of the names; stands before the
/// first entry at first. Loop thread only.
class DirEnumerator : public Base::Object {
  public:
    /// kEndOfFile once there is no further entry.
    result MoveNext() {
        if (next_ == entries_.size()) return result::kEndOfFile;
        ++next_;
        return result::kSuccess;
    }
    /// The entry that the last MoveNext went to; an entry with an empty name before the first.
    DirEntry GetCurrentDirEntry() const { return next_ == 0 ? DirEntry() : entries_[next_ - 1]; }

  private:
    friend class Directory;

    explicit DirEnumerator(std::vector<DirEntry> entries) : entries_(std::move(entries)) {}

    std::vector<DirEntry> entries_;
    std::size_t next_ = 0;
};

}  // namespace Osp::Io
