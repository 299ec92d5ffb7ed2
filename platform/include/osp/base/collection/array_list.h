// A list over a growing array.
#pragma once

#include <vector>

#include <osp/base/collection/ilist.h>

namespace Osp::Base::Collection {

/// Destroying the list does not delete its elements. One thread at a time.
class ArrayList : public IList {
  public:
    /// Reserves room for `capacity` elements; kInvalidArgument when negative. The list grows
    /// beyond.
    result Construct(int capacity);

    result Add(Object* object) override;
    Object* GetAt(int index) const override;
    int GetCount() const override { return static_cast<int>(elements_.size()); }
    void RemoveAll(bool deleteElements) override;

  private:
    std::vector<Object*> elements_;
};

}  // namespace Osp::Base::Collection
