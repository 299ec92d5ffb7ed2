// One name in a folder.
#pragma once

#include <osp/base/string.h>

namespace Osp::Io {

class DirEntry {
  public:
    DirEntry() = default;
    explicit DirEntry(const Base::String& name) : name_(name) {}

    /// Without the folder.
    const Base::String& GetName() const { return name_; }

  private:
    Base::String name_;
};

}  // namespace Osp::Io
