// Tables that photographs of one session share.
#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "effects/blur/gaussian_levels.h"
#include "effects/kernels/circular.h"
#include "effects/types/vignet.h"

namespace Kivo::Effects {

/// Gaussian levels, and the maps of the picture sizes in use. The four most recently used maps of
/// each kind are kept. Any thread.
class EffectTables {
  public:
    const GaussianLevels& Levels() const { return levels_; }

    /// Built on first need; threads that want the same map wait for the one that builds it. A map
    /// stays valid as long as the caller holds it.
    std::shared_ptr<const VignetMap> Vignet(int width, int height, bool wide);
    std::shared_ptr<const CircularMap> Circular(int width, int height, bool concave);

  private:
    static constexpr std::size_t kMostKept = 4;

    struct Key {
        int width;
        int height;
        bool flag;
        bool operator==(const Key&) const = default;
    };
    template <class Map>
    struct Slot {
        std::once_flag isBuilt;
        std::optional<Map> map;
    };
    template <class Map>
    using Kept = std::vector<std::pair<Key, std::shared_ptr<Slot<Map>>>>;  // latest use last

    template <class Map>
    std::shared_ptr<const Map> Find(Kept<Map>& kept, const Key& key);
    template <class Map>
    std::shared_ptr<Slot<Map>> FindSlot(Kept<Map>& kept, const Key& key);

    const GaussianLevels levels_;
    std::mutex mutex_;  // guards what follows
    Kept<VignetMap> vignets_;
    Kept<CircularMap> circulars_;
};

}  // namespace Kivo::Effects
