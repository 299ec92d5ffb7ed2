// Whole photographs, from frames to the stored picture.
#include "effects/composition.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/support/pictures/pictures.h"
#include "tests/support/pictures/plain_composition.h"

namespace {

using namespace Kivo::Effects;
using Kivo::CameraType;
using Kivo::PhotoEffect;

/// Takes photographs of a type as the camera does: frame by frame into an accumulation.
class PhotographTest : public testing::TestWithParam<int> {
  protected:
    static std::vector<Picture> Frames(int width, int height) {
        return RandomPictures(FramesPerPhotograph(CameraType(GetParam())), width, height, 20);
    }

    /// Calls `check` with all effects, with and without HDR, on both cameras.
    template <class Check>
    static void EveryPhotograph(Check check) {
        for (int i = 0; i < 40; ++i) {
            const PlainPhotograph photograph{GetParam(), i / 4, i / 2 % 2 == 1, i % 2 == 1};
            SCOPED_TRACE("effect " + std::to_string(photograph.effect) +
                         (photograph.secondary ? " secondary" : " primary") +
                         (photograph.hdr ? " HDR" : ""));
            check(photograph);
        }
    }

    Picture Take(const PlainPhotograph& photograph, const std::vector<Picture>& frames) {
        Picture accumulation(frames[0].width, frames[0].height);
        const EffectJob job = CacheFrames(photograph, frames, accumulation);
        Picture result(frames[0].width, frames[0].height, 0xEE);
        ComposePhotograph(job, photograph.hdr, frames.back().View(), accumulation.View(),
                          result.View());
        return result;
    }

    /// The last frame arrives a few rows at a time. `expected` is what comes out. Returns how many
    /// rows were finished before all of the frame was there.
    int TakeInRows(const PlainPhotograph& photograph, const std::vector<Picture>& frames,
                   const Picture& expected) {
        const Picture& last = frames.back();
        Picture accumulation(last.width, last.height);
        const EffectJob job = CacheFrames(photograph, frames, accumulation);
        Picture arriving(last.width, last.height, 0x77);
        Picture result(last.width, last.height, 0xEE);
        Composition composition(job, photograph.hdr, arriving.View(), accumulation.View(),
                                result.View());
        int done = 0;
        int doneBeforeLast = 0;
        for (const int rows : {0, 1, 17, 18, 90, last.height - 1, last.height}) {
            std::copy_n(last.bytes.begin(), 3 * last.width * rows, arriving.bytes.begin());
            doneBeforeLast = done;
            done = composition.Advance(rows);
            EXPECT_GE(done, doneBeforeLast);
            EXPECT_TRUE(std::equal(result.bytes.begin(),
                                   result.bytes.begin() + 3 * last.width * done,
                                   expected.bytes.begin()))
                << done << " rows after " << rows;
        }
        EXPECT_EQ(done, last.height);
        return doneBeforeLast;
    }

  private:
    /// All but the last.
    EffectJob CacheFrames(const PlainPhotograph& photograph, const std::vector<Picture>& frames,
                          Picture& accumulation) {
        EffectJob job{.type = CameraType(photograph.type),
                      .effect = PhotoEffect(photograph.effect),
                      .isFront = photograph.secondary,
                      .firstFrame = {},
                      .tables = &tables_,
                      .scratch = &scratch_};
        for (; !IsLastFrame(job.type, job.shotCounter); ++job.shotCounter) {
            EXPECT_TRUE(CacheFrame(job.type, job.isFront, job.shotCounter,
                                   frames.at(job.shotCounter).View(), accumulation.View(),
                                   scratch_));
        }
        EXPECT_EQ(job.shotCounter + 1, static_cast<int>(frames.size()));
        return job;
    }

    EffectTables tables_;
    Scratch scratch_;
};

INSTANTIATE_TEST_SUITE_P(Types, PhotographTest, testing::Range(0, 6), [](const auto& info) {
    return std::string(Kivo::NameOf(CameraType(info.param)));
});

TEST_P(PhotographTest, IsThePlainOneForEveryEffectHdrAndCamera) {
    const Plain::Levels levels;
    // Of a camera, and such that four does not divide.
    for (const Size& size : {Size{124, 92}, Size{640, 480}, Size{23, 29}, Size{58, 35}}) {
        const std::vector<Picture> frames = Frames(size.width, size.height);
        EveryPhotograph([&](const PlainPhotograph& photograph) {
            const Picture expected = ComposePlain(photograph, frames, levels);
            AtEveryVectorLevel(
                [&](int) { ExpectSame(Take(photograph, frames), expected, "photograph"); });
        });
    }
}

TEST_P(PhotographTest, GrowsWithItsLastFrame) {
    const int height = 150;
    const std::vector<Picture> frames = Frames(61, height);
    EveryPhotograph([&](const PlainPhotograph& photograph) {
        const Picture expected = Take(photograph, frames);
        const int early = TakeInRows(photograph, frames, expected);
        const bool needsAll = frames.size() == 4 || photograph.effect == 1 ||
                              photograph.effect == 2 || photograph.effect == 9;
        // Two blurs and the contours look ahead, by nine rows and by one.
        const int least = height - 1 - 9 - 9 - 1;
        EXPECT_TRUE(needsAll ? early == 0 : early >= least) << early;
    });
}

TEST_P(PhotographTest, IsTheSameOnEveryMachine) {
    // Sums over all effects, HDR and cameras: what another compiler, processor or mathematics
    // library must reproduce.
    constexpr std::uint64_t kSums[6] = {0x41ee894b3082a754U, 0x8c39ce954e06b04bU,
                                        0x1882208d2751e1c6U, 0x2d4972d35da9c66fU,
                                        0xa050fd71c6b35bd5U, 0x6bc545eff2092489U};
    const std::vector<Picture> frames = Frames(800, 480);
    std::uint64_t sum = 14695981039346656037U;
    EveryPhotograph([&](const PlainPhotograph& photograph) {
        for (const std::uint8_t value : Take(photograph, frames).bytes) {
            sum = (sum ^ value) * 1099511628211U;
        }
    });
    EXPECT_EQ(sum, kSums[GetParam()]) << std::hex << sum;
}

TEST(ApplyEffect, SaysWhetherAKernelMadeThePixels) {
    EffectTables tables;
    Scratch scratch;
    const Picture in = RandomPicture(40, 30, Look::kNoise, 41);
    const Picture first = RandomPicture(40, 30, Look::kNoise, 42);
    const auto changes = [&](int type, int effect, int counter) {
        Picture out(40, 30, 9);
        const EffectJob job{
            CameraType(type), PhotoEffect(effect), false, counter, first.View(), &tables, &scratch};
        const bool changed = ApplyEffect(job, in.View(), out.View());
        EXPECT_EQ(changed, out.bytes != in.bytes) << type << ", " << effect << ", " << counter;
        return changed;
    };
    for (const int effect : {0, 10, 255}) {
        for (const int type : {0, 1, 5}) EXPECT_TRUE(changes(type, effect, 0));
        for (const int type : {2, 3, 6, 200}) EXPECT_FALSE(changes(type, effect, 1));
        for (const int counter : {0, 2, 3}) EXPECT_FALSE(changes(4, effect, counter));
        EXPECT_TRUE(changes(4, effect, 1));
    }
    for (int effect = 1; effect < 10; ++effect) {
        for (int type = 0; type < 7; ++type) EXPECT_TRUE(changes(type, effect, 0));
    }
}

TEST(Frames, BeyondTheFourthAreNotStored) {
    Scratch scratch;
    const Picture frame = RandomPicture(24, 24, Look::kNoise, 51);
    for (int type = 0; type < 6; ++type) {
        Picture accumulation(24, 24, 3);
        EXPECT_FALSE(
            CacheFrame(CameraType(type), false, 4, frame.View(), accumulation.View(), scratch));
        EXPECT_EQ(accumulation.bytes, Picture(24, 24, 3).bytes);
    }
}

// In sizes so small that lines coincide with the border the sanitizers watch.
TEST(DividingLines, AreOnlyDrawnForFourFramesAndInsideThePicture) {
    for (const Size& size : {Size{16, 16}, Size{1, 1}, Size{3, 2}, Size{2, 3}, Size{4, 4}}) {
        const Picture before(size.width, size.height, 5);
        for (int i = 0; i < 12; ++i) {
            const int type = i / 2;
            Picture picture = before;
            DrawDividingLines(CameraType(type), i % 2 == 1, 2, picture.View());
            EXPECT_EQ(picture.bytes, before.bytes);
            DrawDividingLines(CameraType(type), i % 2 == 1, 3, picture.View());
            EXPECT_EQ(picture.bytes != before.bytes, type == 2 || type == 3);
        }
    }
}

}  // namespace
