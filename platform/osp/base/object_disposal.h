// What the loop can delete once the current dispatch has unwound.
#pragma once

#include <memory>
#include <utility>

namespace Osp::Base {

/// The loop deletes without knowing what. The destructor runs on the loop thread, outside every
/// event, and may hand over further objects.
class Disposable {
  public:
    virtual ~Disposable() = default;
};

/// Holds any object until the loop lets go of it.
template <class T>
class DisposableHolder : public Disposable {
  public:
    explicit DisposableHolder(std::unique_ptr<T> object) : object_(std::move(object)) {}

  private:
    std::unique_ptr<T> object_;
};

}  // namespace Osp::Base
