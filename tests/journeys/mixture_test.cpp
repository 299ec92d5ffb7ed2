// Hundreds of photographs of all types and effects on both cameras.
#include <gtest/gtest.h>
#include <random>
#include <sys/resource.h>

#include "tests/support/camera_screen.h"
#include "tests/support/choosing.h"
#include "tests/support/phone.h"
#include "tests/support/pictures/jpeg.h"
#include "tests/support/sanitizers.h"

namespace Kivo {
namespace {

using namespace Testing;

constexpr int kPhotographs = kIsSanitized ? 100 : 500;

/// The most memory that this process ever took.
long PeakKb() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

TEST(Mixture, FilesAndListAgreeAndNumbersHaveNoGap) {
    std::mt19937 random(7);
    const auto below = [&random](unsigned n) { return static_cast<int>(random() % n); };
    Phone phone({.registry = {{"CAPTURE_WIDTH", 640}, {"CAPTURE_HEIGHT", 480}}});
    phone.Do({"await preview", "wait 200"});
    std::vector<std::string> descriptions;
    bool isHdr = false;
    long earlyKb = 0;
    while (static_cast<int>(descriptions.size()) < kPhotographs) {
        if (earlyKb == 0 && descriptions.size() > kPhotographs / 3) earlyKb = PeakKb();
        const auto type = static_cast<CameraType>(below(6));
        // The effects that every type offers, and Normal.
        const auto effect = static_cast<PhotoEffect>(below(2) == 0 ? 0 : 3 + below(6));
        Choose(phone, type, effect);
        if (below(4) == 0) phone.Do({Tap(kSwapButton), "wait 400", "await preview", "wait 200"});
        if (below(4) == 0) {
            phone.Do({Tap(kHdrButton), "wait 400"});
            isHdr = !isHdr;
        }
        phone.Do("key camera");
        if (type == CameraType::kMix) phone.Do({"wait 1500", "key camera"});
        const std::string description =
            std::string(NameOf(type)) + " (" + std::string(NameOf(effect)) + "),1X";
        descriptions.push_back(description);
        if (isHdr) descriptions.push_back(description + ",HDR");
        const auto error = phone.Try("await photos " + std::to_string(descriptions.size()));
        ASSERT_FALSE(error) << *error << " after " << description;
        phone.Wait(200);
    }
    constexpr long kSlackKb = 8192;
    if (!kIsSanitized) {
        EXPECT_LE(PeakKb(), earlyKb + kSlackKb);
    }
    const auto files = phone.Photos();
    const auto list = phone.PhotoList();
    ASSERT_EQ(files.size(), descriptions.size());
    ASSERT_EQ(list.size(), descriptions.size());
    for (std::size_t i = 0; i < descriptions.size(); ++i) {
        const std::string number = std::to_string(10000 + i).substr(1);
        const std::string name = "/Media/Images/KIVO" + number + ".jpg";
        EXPECT_EQ(list[i]["path"], name);
        EXPECT_EQ(list[i]["description"], descriptions[i]);
        EXPECT_EQ(files[i], phone.DataFolder() + name);
        EXPECT_TRUE(IsWholeJpeg(files[i])) << files[i];
    }
}

}  // namespace
}  // namespace Kivo
