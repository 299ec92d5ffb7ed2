#include <cmath>
#include <memory>
#include <string_view>
#include <unordered_map>

#include <osp/base/collection/array_list.h>
#include <osp/base/collection/hash_map.h>

#include "osp/base/out_of_memory.h"

namespace Osp::Base::Collection {

struct HashMap::Entries {
    struct Entry {
        String* key;
        Object* value;
    };
    std::unordered_map<std::u16string_view, Entry> byText;  // views of the keys' own texts
};

HashMap::HashMap() = default;

HashMap::~HashMap() = default;

result HashMap::Construct(int capacity, float loadFactor) {
    if (capacity < 0 || !(loadFactor > 0) || !std::isfinite(loadFactor)) {
        return result::kInvalidArgument;
    }
    if (entries_) return result::kMapConstruction;
    const result r = OrOutOfMemory([&] {
        auto entries = std::make_unique<Entries>();
        entries->byText.max_load_factor(loadFactor);
        entries->byText.reserve(static_cast<std::size_t>(capacity));
        entries_ = std::move(entries);
        return result::kSuccess;
    });
    return Succeeded(r) ? r : result::kMapConstruction;
}

result HashMap::Add(String* key, Object* value) {
    if (!entries_) return result::kInvalidState;
    const bool isNew = entries_->byText.try_emplace(key->Units(), Entries::Entry{key, value}).second;
    return isNew ? result::kSuccess : result::kKeyAlreadyExists;
}

Object* HashMap::GetValue(const String& key) const {
    if (!entries_) return nullptr;
    const auto found = entries_->byText.find(key.Units());
    return found == entries_->byText.end() ? nullptr : found->second.value;
}

int HashMap::GetCount() const {
    return entries_ ? static_cast<int>(entries_->byText.size()) : 0;
}

IList* HashMap::GetKeysN() const {
    auto keys = std::make_unique<ArrayList>();
    if (Failed(keys->Construct(GetCount()))) return nullptr;
    if (!entries_) return keys.release();
    for (const auto& [text, entry] : entries_->byText) (void)keys->Add(entry.key);
    return keys.release();
}

void HashMap::RemoveAll(bool deleteElements) {
    if (!entries_) return;
    const auto removed = std::move(entries_->byText);
    entries_->byText.clear();
    if (!deleteElements) return;
    for (const auto& [text, entry] : removed) {
        delete entry.key;
        delete entry.value;
    }
}

}  // namespace Osp::Base::Collection
