// One name in a folder.
#pragma once

#include <osp/base/string.h>

namespace Osp::Io {

class DirEntry {
  public:
    DirEntry() = default;

    /// Without the folder.
    const Base::String& GetName() const { return name_; }

  private:
    friend class Directory;

    explicit DirEntry(const Base::String& name) : name_(name) {}

    Base::String name_;
};

}  // namespace Osp::Io
