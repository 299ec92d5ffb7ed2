#include <osp/base/collection/array_list.h>

namespace Osp::Base::Collection {

result ArrayList::Construct(int capacity) {
    if (capacity < 0) return result::kInvalidArgument;
    elements_.reserve(static_cast<std::size_t>(capacity));
    return result::kSuccess;
}

result ArrayList::Add(Object* object) {
    elements_.push_back(object);
    return result::kSuccess;
}

Object* ArrayList::GetAt(int index) const {
    if (index < 0 || index >= GetCount()) return nullptr;
    return elements_[static_cast<std::size_t>(index)];
}

void ArrayList::RemoveAll(bool deleteElements) {
    if (deleteElements) {
        for (const Object* element : elements_) delete element;
    }
    elements_.clear();
}

}  // namespace Osp::Base::Collection
