// A pointer that knows when its control has ended.
#pragma once

#include <memory>

#include <osp/ui/control.h>

namespace Osp::Ui {

/// For whoever refers to a control that others may remove. Loop thread only.
template <class T>
class WeakControl {
  public:
    WeakControl() = default;
    explicit WeakControl(T& control)
        : control_(&control), alive_(static_cast<Control&>(control).self_) {}

    /// Null once the control has been deleted; one that has been removed from the tree is deleted
    /// after the current event.
    T* Get() const { return alive_.expired() ? nullptr : control_; }

  private:
    T* control_ = nullptr;  // not owned
    std::weak_ptr<Control*> alive_;
};

}  // namespace Osp::Ui
