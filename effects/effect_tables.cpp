#include "effect_tables.h"

#include <algorithm>

namespace Kivo::Effects {

// The lock is held while a map is built, so that threads that want the same one wait for it instead
// of building it too.
template <class Map>
std::shared_ptr<const Map> EffectTables::Find(Kept<Map>& kept, const Key& key) {
    const std::lock_guard lock(mutex_);
    const auto found = std::find_if(kept.begin(), kept.end(),
                                    [&](const auto& entry) { return entry.first == key; });
    if (found != kept.end()) {
        std::rotate(found, found + 1, kept.end());
        return kept.back().second;
    }
    auto map = std::make_shared<const Map>(key.width, key.height, key.flag);
    if (kept.size() == kMostKept) kept.erase(kept.begin());
    kept.emplace_back(key, map);
    return map;
}

std::shared_ptr<const VignetMap> EffectTables::Vignet(int width, int height, bool wide) {
    return Find(vignets_, {width, height, wide});
}

std::shared_ptr<const CircularMap> EffectTables::Circular(int width, int height, bool concave) {
    return Find(circulars_, {width, height, concave});
}

}  // namespace Kivo::Effects
