// One name in a folder.
#pragma once

#include <utility>

#include <osp/base/string.h>

namespace Osp::Io {

class DirEntry {
  public:
    DirEntry() = default;
    explicit DirEntry(Base::String name) : name_(std::move(name)) {}

    /// Without the folder.
    const Base::String& GetName() const { return name_; }

  private:
    Base::String name_;
};

}  // namespace Osp::Io
