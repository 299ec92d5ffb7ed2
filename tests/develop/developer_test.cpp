// Development while the picture is still being decoded, and with memory that is used again.
#include "develop/developer.h"

#include <gtest/gtest.h>
#include <string>

#include "tests/develop/develop_fixture.h"

namespace Kivo::Tools {
namespace {

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
            sources_.push_back({"frame", Testing::BytesOf(file)});
        }
    }
    std::span<const Source> Sources() const { return sources_; }

  private:
    std::vector<std::string> files_;
    std::vector<Source> sources_;
};

/// What is developed, or why nothing is.
std::string Develop(Developer& developer, const Recipe& recipe, PictureFormat format) {
    Osp::Media::EncodedPicture developed;
    const Problem problem =
        developer.Develop(recipe, format, developer.MakeMetadata(recipe, format), developed);
    return problem.empty() ? std::string(developed.Bytes().begin(), developed.Bytes().end())
                           : problem;
}

/// Calls `check` with recipes whose chains differ in what they wait for.
template <class Check>
void EveryRecipe(Check check) {
    constexpr PhotoEffect kEffects[] = {PhotoEffect::kNormal, PhotoEffect::kFisheye,
                                        PhotoEffect::kSepia, PhotoEffect::kEdge,
                                        PhotoEffect::kMirror};
    for (int i = 0; i < 6 * 5 * 4; ++i) {
        check(Recipe{CameraType(i / 20), kEffects[i / 4 % 5], i % 2 == 1, i / 2 % 2 == 1});
    }
}

TEST(Developer, GivesTheSameBytesWithAndWithoutOtherThreadsWhateverWasBefore) {
    Effects::EffectTables tables;
    Developer alone(tables, false);
    Developer inBackground(tables, true);
    // In turn, so that one has to be done with before the other is.
    const Frames frames[] = {{4, 480, 330, 1}, {4, 61, 90, 9}};
    unsigned turn = 0;
    EveryRecipe([&](const Recipe& recipe) {
        const auto count = static_cast<std::size_t>(Effects::FramesPerPhotograph(recipe.type));
        const auto own = frames[turn++ % 2].Sources().first(count);
        ASSERT_EQ(alone.Load(own), "");
        const std::string expected = Develop(alone, recipe, PictureFormat::kJpeg);
        EXPECT_TRUE(expected.starts_with("\xFF\xD8")) << expected;
        ASSERT_EQ(inBackground.Load(own), "");
        EXPECT_TRUE(Develop(inBackground, recipe, PictureFormat::kJpeg) == expected)
            << NameOf(recipe.type);
    });
}

TEST(Developer, ReadsNothingAfterItHasUnloaded) {
    Effects::EffectTables tables;
    Developer developer(tables, true);
    const Frames small(1, 30, 20, 1);
    // Wide channels take long to read, and so much memory is given back to the system at once.
    std::string large = "P6 2400 1600 65535\n" + std::string(2400UL * 1600 * 6, 'x');
    const Source frames[] = {{"large", Testing::BytesOf(large)}, small.Sources()[0]};
    EXPECT_NE(developer.Load(frames), "");
    developer.Unload();
    std::string().swap(large);
}

TEST(Developer, GoesOnAfterADamagedPicture) {
    Effects::EffectTables tables;
    Developer developer(tables, true);
    const Frames frames(1, 300, 200, 9);
    const Source whole = frames.Sources()[0];
    const Source cut{"cut.jpg", whole.bytes.first(whole.bytes.size() / 2)};
    for (int round = 0; round < 3; ++round) {
        ASSERT_EQ(developer.Load({&cut, 1}), "");  // its header is good
        EXPECT_EQ(Develop(developer, {}, PictureFormat::kJpeg),
                  "cut.jpg: the picture is damaged or cut off");
        ASSERT_EQ(developer.Load({&whole, 1}), "");
        EXPECT_TRUE(Develop(developer, {}, PictureFormat::kJpeg).starts_with("\xFF\xD8"));
    }
}

}  // namespace
}  // namespace Kivo::Tools
