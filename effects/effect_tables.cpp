#include "effects/effect_tables.h"

#include <algorithm>

namespace Kivo::Effects {

template <class Map>
std::shared_ptr<EffectTables::Slot<Map>> EffectTables::FindSlot(Kept<Map>& kept, const Key& key) {
    const std::lock_guard lock(mutex_);
    const auto found = std::find_if(kept.begin(), kept.end(),
                                    [&](const auto& entry) { return entry.first == key; });
    if (found != kept.end()) {
        std::rotate(found, found + 1, kept.end());
        return kept.back().second;
    }
    if (kept.size() == kMostKept) kept.erase(kept.begin());
    return kept.emplace_back(key, std::make_shared<Slot<Map>>()).second;
}

template <class Map>
std::shared_ptr<const Map> EffectTables::Find(Kept<Map>& kept, const Key& key) {
    const std::shared_ptr<Slot<Map>> slot = FindSlot(kept, key);
    std::call_once(slot->isBuilt, [&] { slot->map.emplace(key.width, key.height, key.flag); });
    return {slot, &*slot->map};
}

std::shared_ptr<const VignetMap> EffectTables::Vignet(int width, int height, bool wide) {
    return Find(vignets_, {width, height, wide});
}

std::shared_ptr<const CircularMap> EffectTables::Circular(int width, int height, bool concave) {
    return Find(circulars_, {width, height, concave});
}

}  // namespace Kivo::Effects
