// Every kernel against its plain version.
#include <functional>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <thread>

#include "effects/effect_tables.h"
#include "effects/kernels/bw.h"
#include "effects/kernels/colorize.h"
#include "effects/kernels/edge.h"
#include "effects/kernels/mirror.h"
#include "effects/kernels/negative.h"
#include "effects/kernels/sepia.h"
#include "effects/types/hdr.h"
#include "effects/types/mix.h"
#include "effects/types/out_focus.h"
#include "effects/types/qshrink.h"
#include "effects/types/tilt_shift.h"
#include "tests/effects/plain/plain_blur.h"
#include "tests/effects/plain/plain_colour.h"
#include "tests/support/pictures/pictures.h"

namespace {

using namespace Kivo::Effects;

/// Tables of both kinds, made once.
struct Tables {
    EffectTables product;
    Plain::Levels plain;
};
Tables& TheTables() {
    static Tables tables;
    return tables;
}

/// A kernel and its plain version. `first` is a second picture, which Mix alone looks at.
struct Kernel {
    std::string name;
    std::function<void(ConstPixels first, ConstPixels, Pixels, Scratch&, Rows)> product;
    std::function<void(ConstPixels first, ConstPixels, Pixels)> plain;
};

void PrintTo(const Kernel& kernel, std::ostream* stream) {
    *stream << kernel.name;
}

Kernel Vignetting(bool wide) {
    return {wide ? "WideVignet" : "NarrowVignet",
            [wide](ConstPixels, ConstPixels in, Pixels out, Scratch& scratch, Rows rows) {
                const auto map = TheTables().product.Vignet(in.width, in.height, wide);
                Vignet(in, out, *map, scratch, rows);
            },
            [wide](ConstPixels, ConstPixels in, Pixels out) { Plain::Vignet(in, out, wide); }};
}

Kernel Remapping(bool concave) {
    return {
        concave ? "Concave" : "Fisheye",
        [concave](ConstPixels, ConstPixels in, Pixels out, Scratch&, Rows rows) {
            const auto map = TheTables().product.Circular(in.width, in.height, concave);
            Circular(in, out, *map, rows);
        },
        [concave](ConstPixels, ConstPixels in, Pixels out) { Plain::Circular(in, out, concave); }};
}

Kernel Tinting(int hue, int saturation, float opacity) {
    return {"Colorize" + std::to_string(hue) + "_" + std::to_string(saturation) + "_" +
                std::to_string(static_cast<int>(opacity * 100)),
            [=](ConstPixels, ConstPixels in, Pixels out, Scratch&, Rows rows) {
                Colorize(in, out, hue, saturation, opacity, rows);
            },
            [=](ConstPixels, ConstPixels in, Pixels out) {
                Plain::Colorize(in, out, hue, saturation, opacity);
            }};
}

Kernel Mixing() {
    return {"Mix",
            [](auto first, auto in, auto out, auto&, auto rows) { Mix(first, in, out, rows); },
            [](auto first, auto in, auto out) { Plain::Mix(first, in, out); }};
}

Kernel Edging() {
    return {"Edge",
            [](auto, auto in, auto out, auto& scratch, auto rows) { Edge(in, out, scratch, rows); },
            [](auto, auto in, auto out) { Plain::Edge(in, out); }};
}

Kernel OfPixels(const char* name, void (*product)(ConstPixels, Pixels, Rows),
                void (*plain)(ConstPixels, Pixels)) {
    return {name, [=](auto, auto in, auto out, auto&, auto rows) { product(in, out, rows); },
            [=](auto, auto in, auto out) { plain(in, out); }};
}

Kernel Blurring(const char* name,
                void (*product)(ConstPixels, Pixels, const GaussianLevels&, Scratch&, Rows),
                void (*plain)(ConstPixels, Pixels, const Plain::Levels&)) {
    return {name,
            [=](auto, auto in, auto out, auto& scratch, auto rows) {
                product(in, out, TheTables().product.Levels(), scratch, rows);
            },
            [=](auto, auto in, auto out) { plain(in, out, TheTables().plain); }};
}

std::vector<Kernel> PixelKernels() {
    return {OfPixels("BW", BW, Plain::BW), OfPixels("Sepia", Sepia, Plain::Sepia),
            OfPixels("Negative", Negative, Plain::Negative), Tinting(121, 62, 0.5F),
            Tinting(242, 62, 0.5F)};
}

std::vector<Kernel> AllKernels() {
    std::vector<Kernel> kernels = PixelKernels();
    kernels.insert(
        kernels.end(),
        {Tinting(200, 0, 0.25F), Tinting(10, 255, 1.5F), Tinting(85, 128, -1.0F), Vignetting(true),
         Vignetting(false), Remapping(true), Remapping(false), Edging(), Mixing(),
         Blurring("HDR", HDR, Plain::HDR), Blurring("TiltShift", TiltShift, Plain::TiltShift),
         Blurring("OutFocus", OutFocus, Plain::OutFocus)});
    return kernels;
}

/// At every vector level. Another fill than the plain picture's shows bytes that are not written.
void ExpectPlain(const Kernel& kernel, const Picture& first, const Picture& in,
                 bool isInPlace = false) {
    Picture expected(in.width, in.height);
    kernel.plain(first.View(), in.View(), expected.View());
    static Scratch scratch;  // used again, as between photographs
    AtEveryVectorLevel([&](int level) {
        Picture out = isInPlace ? in : Picture(in.width, in.height, 0xA5);
        const ConstPixels source = isInPlace ? out.View() : in.View();
        kernel.product(first.View(), source, out.View(), scratch, {});
        ExpectSame(out, expected, kernel.name + " at level " + std::to_string(level));
    });
}

class KernelTest : public testing::TestWithParam<Kernel> {
  protected:
    static void Compare(int width, int height, Look look) {
        ExpectPlain(GetParam(), RandomPicture(width, height, Look::kNoise, 5),
                    RandomPicture(width, height, look, 7));
    }

    Scratch scratch_;
};

INSTANTIATE_TEST_SUITE_P(Effects, KernelTest, testing::ValuesIn(AllKernels()),
                         [](const auto& info) {
                             std::string name = info.param.name;
                             std::replace(name.begin(), name.end(), '-', 'm');
                             return name;
                         });

TEST_P(KernelTest, GivesThePlainResultAtAwkwardSizes) {
    for (const Size& size : kAwkwardSizes) {
        for (const Look look : kLooks) Compare(size.width, size.height, look);
    }
}

TEST_P(KernelTest, GivesThePlainResultAtCaptureSizes) {
    Compare(640, 480, Look::kOutliers);
    Compare(800, 480, Look::kNoise);
    Compare(1280, 960, Look::kGradient);
    Compare(1600, 960, Look::kNoise);
}

TEST_P(KernelTest, GivesTheSameBytesInBandsOnSeveralThreads) {
    const int width = 130;
    const int height = 151;
    const Picture first = RandomPicture(width, height, Look::kOutliers, 1);
    const Picture in = RandomPicture(width, height, Look::kNoise, 2);
    Picture whole(width, height);
    GetParam().product(first.View(), in.View(), whole.View(), scratch_, {});
    Picture banded(width, height);
    std::vector<std::thread> threads;
    for (const Rows rows : {Rows{0, 1}, Rows{1, 40}, Rows{40, 103}, Rows{103, 1000}}) {
        threads.emplace_back([&, rows] {
            Scratch own;
            GetParam().product(first.View(), in.View(), banded.View(), own, rows);
        });
    }
    for (std::thread& thread : threads) thread.join();
    ExpectSame(banded, whole, GetParam().name);
}

TEST_P(KernelTest, TakesNoFreshMemoryOnceWarm) {
    const Picture in = RandomPicture(200, 100, Look::kNoise, 3);
    Picture out(200, 100);
    GetParam().product(in.View(), in.View(), out.View(), scratch_, {});
    const std::size_t warm = scratch_.CapacityBytes();
    for (int i = 0; i < 3; ++i) GetParam().product(in.View(), in.View(), out.View(), scratch_, {});
    EXPECT_EQ(scratch_.CapacityBytes(), warm);
}

TEST(Kernels, OfSinglePixelsGiveThePlainResultForEveryColour) {
    const Picture in = EveryColour();
    for (const Kernel& kernel : PixelKernels()) ExpectPlain(kernel, in, in);
}

// Factors of 16 bits stand for divisions there.
TEST(Kernels, ThatDarkenGiveThePlainResultForEveryValueAtEveryPixel) {
    for (int value = 0; value < 256; ++value) {
        const Picture in(640, 480, static_cast<std::uint8_t>(value));
        for (const bool wide : {false, true}) ExpectPlain(Vignetting(wide), in, in);
    }
}

TEST(Kernels, ThatReadNoOtherRowsWorkInPlace) {
    const Picture first = RandomPicture(515, 38, Look::kNoise, 5);
    const Picture in = RandomPicture(515, 38, Look::kExtremes, 7);
    std::vector<Kernel> kernels = PixelKernels();
    kernels.insert(kernels.end(), {Mixing(), Vignetting(true)});
    for (const Kernel& kernel : kernels) ExpectPlain(kernel, first, in, true);
}

TEST(Mirror, ReflectsEitherWayAndLeavesTheMiddleOfOddSizesAlone) {
    for (const Size& size : kAwkwardSizes) {
        const Picture in = RandomPicture(size.width, size.height, Look::kNoise, 8);
        for (const bool vertical : {false, true}) {
            Picture expected(size.width, size.height, 0x3C);
            Picture out(size.width, size.height, 0x3C);
            Plain::Mirror(in.View(), expected.View(), vertical);
            Mirror(in.View(), out.View(), vertical);
            ExpectSame(out, expected, vertical ? "top to bottom" : "left to right");
        }
    }
}

TEST(QShrink, KeepsTheTopLeftPixelOfEachBlock) {
    for (const Size& size : kAwkwardSizes) {
        const Picture in = RandomPicture(size.width, size.height, Look::kNoise, 9);
        Picture expected(size.width / 2, size.height / 2);
        Picture out(size.width / 2, size.height / 2);
        Plain::QShrink(in.View(), expected.View());
        QShrink(in.View(), out.View());
        ExpectSame(out, expected, "QShrink");
    }
}

}  // namespace
