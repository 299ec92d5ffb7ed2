// A sequence of objects.
#pragma once

#include <osp/base/object.h>
#include <osp/base/result.h>

namespace Osp::Base::Collection {

/// Holds pointers; whether the list or somebody else owns the objects is agreed per list, and
/// RemoveAll(true) is how an owner lets go of them.
class IList : public Object {
  public:
    /// At the end; null is allowed.
    virtual result Add(Object* object) = 0;
    /// Null when `index` is out of range.
    virtual Object* GetAt(int index) const = 0;
    virtual int GetCount() const = 0;
    /// Empties the list; with `deleteElements`, deletes what was in it.
    virtual void RemoveAll(bool deleteElements) = 0;
};

}  // namespace Osp::Base::Collection
