// Tables and work memory that outlive one photograph.
#include <cstdint>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

#include "effects/effect_tables.h"
#include "effects/pixels/scratch.h"

namespace {

using namespace Kivo::Effects;

TEST(EffectTables, KeepTheMapsInUseAndForgetTheOthers) {
    EffectTables tables;
    const auto first = tables.Vignet(100, 50, true);
    const std::weak_ptr<const VignetMap> narrow = tables.Vignet(100, 50, false);
    EXPECT_NE(tables.Vignet(100, 50, false), first);
    for (int i = 0; i < 10; ++i) {
        static_cast<void>(tables.Vignet(101 + i, 50, true));
        EXPECT_EQ(tables.Vignet(100, 50, true), first) << "used just before";
    }
    EXPECT_TRUE(narrow.expired());
}

TEST(EffectTables, BuildOneMapForThreadsThatWantTheSame) {
    EffectTables tables;
    std::vector<std::shared_ptr<const CircularMap>> maps(4);
    std::vector<std::thread> threads;
    for (auto& map : maps) {
        threads.emplace_back([&] { map = tables.Circular(120, 80, true); });
    }
    for (std::thread& thread : threads) thread.join();
    for (const auto& map : maps) EXPECT_EQ(map, maps[0]);
}

TEST(Scratch, GivesBackWhatAScopeTook) {
    Scratch scratch;
    const std::uint8_t* outer = nullptr;
    const float* inner = nullptr;
    for (int round = 0; round < 3; ++round) {
        Scratch::Scope scope(scratch);
        const auto bytes = scope.Take<std::uint8_t>(1000003);
        std::fill(bytes.begin(), bytes.end(), std::uint8_t{7});
        {
            Scratch::Scope nested(scratch);
            const auto floats = nested.Take<float>(300000);
            std::fill(floats.begin(), floats.end(), 1.0F);
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(floats.data()) % 64, 0U);
            EXPECT_TRUE(round == 0 || floats.data() == inner);
            inner = floats.data();
        }
        EXPECT_EQ(bytes.back(), 7);
        EXPECT_TRUE(round == 0 || bytes.data() == outer);
        outer = bytes.data();
    }
    EXPECT_LT(scratch.CapacityBytes(), 2300000U);
}

}  // namespace
