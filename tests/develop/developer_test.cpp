// Development while the picture is still being decoded, and with memory that is used again.
#include "develop/developer.h"

#include <gtest/gtest.h>
#include <memory>

#include "tests/support/jpeg.h"

namespace Kivo::Tools {
namespace {

std::vector<std::uint8_t> BytesOf(const Osp::Media::EncodedPicture& picture) {
    return {picture.Bytes().begin(), picture.Bytes().end()};
}

/// The files of some frames.
class Frames {
  public:
    Frames(int count, int width, int height, unsigned seed) {
        for (int i = 0; i < count; ++i) {
            const auto own = static_cast<unsigned>(i) + seed;
            files_.push_back(
                Testing::EncodeJpeg(RandomPicture(width, height, Look::kGradient, own)));
        }
        for (const std::string& file : files_) {
            sources_.push_back(
                {"frame", {reinterpret_cast<const std::uint8_t*>(file.data()), file.size()}});
        }
    }
    std::span<const Source> Sources() const { return sources_; }

  private:
    std::vector<std::string> files_;
    std::vector<Source> sources_;
};

Problem Develop(Developer& developer, const Recipe& recipe, PictureFormat format,
                Osp::Media::EncodedPicture& developed) {
    return developer.Develop(recipe, format, developer.MakeMetadata(recipe, format), developed);
}

/// Calls `check` with recipes whose chains differ in what they wait for.
template <class Check>
void EveryRecipe(Check check) {
    for (int type = 0; type < 6; ++type) {
        for (const auto effect : {PhotoEffect::kNormal, PhotoEffect::kFisheye, PhotoEffect::kSepia,
                                  PhotoEffect::kEdge, PhotoEffect::kMirror}) {
            for (const bool hdr : {false, true}) {
                for (const bool isFront : {false, true}) {
                    check(Recipe{CameraType(type), effect, hdr, isFront});
                }
            }
        }
    }
}

TEST(Developer, GivesTheSameBytesWithAndWithoutOtherThreads) {
    Effects::EffectTables tables;
    Developer alone(tables, false);
    Developer inBackground(tables, true);
    const Frames frames(4, 480, 330, 1);
    EveryRecipe([&](const Recipe& recipe) {
        Osp::Media::EncodedPicture expected;
        Osp::Media::EncodedPicture developed;
        const auto count = static_cast<std::size_t>(Effects::FramesPerPhotograph(recipe.type));
        const auto own = frames.Sources().first(count);
        ASSERT_EQ(alone.Load(own), "");
        ASSERT_EQ(Develop(alone, recipe, PictureFormat::kJpeg, expected), "");
        ASSERT_EQ(inBackground.Load(own), "");
        ASSERT_EQ(Develop(inBackground, recipe, PictureFormat::kJpeg, developed), "");
        EXPECT_EQ(BytesOf(developed), BytesOf(expected)) << NameOf(recipe.type);
    });
}

TEST(Developer, IsNotSwayedByThePhotographsBefore) {
    Effects::EffectTables tables;
    Developer used(tables, true);
    for (const int width : {61, 200, 61}) {
        const Frames frames(4, width, 90, static_cast<unsigned>(width));
        ASSERT_EQ(used.Load(frames.Sources()), "");
        Developer fresh(tables, false);
        ASSERT_EQ(fresh.Load(frames.Sources()), "");
        EveryRecipe([&](const Recipe& recipe) {
            Osp::Media::EncodedPicture expected;
            Osp::Media::EncodedPicture developed;
            ASSERT_EQ(Develop(fresh, recipe, PictureFormat::kPpm, expected), "");
            ASSERT_EQ(Develop(used, recipe, PictureFormat::kPpm, developed), "");
            ASSERT_EQ(BytesOf(developed), BytesOf(expected)) << NameOf(recipe.type);
        });
    }
}

TEST(Developer, ReadsNothingAfterItHasUnloaded) {
    Effects::EffectTables tables;
    Developer developer(tables, true);
    const Frames small(1, 30, 20, 1);
    // Wide channels take long to read, and so much memory is given back to the system at once.
    auto large = std::make_unique<std::string>("P6 2400 1600 65535\n");
    large->append(2400UL * 1600 * 6, 'x');
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(large->data());
    const Source frames[] = {{"large", {bytes, large->size()}}, small.Sources()[0]};
    EXPECT_NE(developer.Load(frames), "");
    developer.Unload();
    large.reset();
}

TEST(Developer, GoesOnAfterADamagedPicture) {
    Effects::EffectTables tables;
    Developer developer(tables, true);
    const Frames frames(1, 300, 200, 9);
    const Source whole = frames.Sources()[0];
    const Source cut{"cut.jpg", whole.bytes.first(whole.bytes.size() / 2)};
    Osp::Media::EncodedPicture developed;
    for (int round = 0; round < 3; ++round) {
        ASSERT_EQ(developer.Load({&cut, 1}), "");  // its header is good
        EXPECT_EQ(Develop(developer, {}, PictureFormat::kJpeg, developed),
                  "cut.jpg: the picture is damaged or cut off");
        ASSERT_EQ(developer.Load({&whole, 1}), "");
        EXPECT_EQ(Develop(developer, {}, PictureFormat::kJpeg, developed), "");
    }
}

}  // namespace
}  // namespace Kivo::Tools
