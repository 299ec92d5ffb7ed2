#include "osp/media/picture/exif.h"

#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <random>

#include "tests/platform/media/picture/picture_bytes.h"
#include "tests/support/pictures/jpeg.h"

namespace Osp::Media {
namespace {

std::string BareJpeg() {
    return Kivo::Testing::EncodeJpeg(Picture(8, 8));
}

std::string WithSegment(const Bytes& segment) {
    return BareJpeg().insert(2, std::string(segment.begin(), segment.end()));
}

std::optional<ExifInfo> Read(const std::string& jpeg) {
    return ReadExif(AsBytes(jpeg));
}

TEST(Exif, WhatIsWrittenIsReadBack) {
    for (const char* description :
         {"", "KIVO (Normal),1X", "TILT (Sepia),4X,HDR", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x8C\x8A"}) {
        const ExifInfo info = {.description = description,
                               .dateTimeOriginal = "2026:01:31 23:59:58",
                               .offsetTimeOriginal = "-03:30",
                               .software = "KIVO Camera",
                               .orientation = 1,
                               .size = {1600, 960}};
        const Bytes segment = BuildExifSegment(info);
        EXPECT_EQ(segment[2] * 256u + segment[3] + 2, segment.size());
        const std::string jpeg = WithSegment(segment);
        EXPECT_TRUE(Read(jpeg) == info) << description;
        EXPECT_EQ(Kivo::Testing::DecodeJpeg(jpeg).width, 8) << "still a whole JPEG";
    }
}

TEST(Exif, ALongDescriptionIsCutBetweenCharacters) {
    std::string description;
    while (description.size() < 70'000) description += "\xE2\x82\xAC";
    ExifInfo info;
    info.description = description;
    const auto read = Read(WithSegment(BuildExifSegment(info)));
    ASSERT_TRUE(read);
    EXPECT_GT(read->description.size(), 30'000u);
    EXPECT_EQ(read->description.size() % 3, 0u);
    EXPECT_EQ(read->description, description.substr(0, read->description.size()));
}

TEST(Exif, ThePhotographsTimeIsLocalUnderTheRealClock) {
    setenv("TZ", "Asia/Kolkata", 1);
    const Base::RealClock real;
    const ExifInfo info = DescribePhotograph("d", {4, 3}, real);
    EXPECT_EQ(info.offsetTimeOriginal, "+05:30");
    const std::time_t now = real.EpochMs() / 1000 + (5 * 60 + 30) * 60;
    char day[32];
    std::strftime(day, sizeof day, "%Y:%m:%d %H:", std::gmtime(&now));
    EXPECT_EQ(info.dateTimeOriginal.substr(0, 14), day);
    Base::VirtualClock clock;
    clock.AdvanceTo(std::chrono::hours(13));
    EXPECT_EQ(DescribePhotograph("d", {4, 3}, clock).dateTimeOriginal, "2026:01:02 01:00:00");
    EXPECT_EQ(DescribePhotograph("d", {4, 3}, clock).offsetTimeOriginal, "+00:00");
    unsetenv("TZ");
}

TEST(Exif, OtherFilesSayNothingAndDamageDoesNoHarm) {
    for (const std::string& other : {BareJpeg(), std::string(), std::string("\x89PNG\r\n\x1A\n")}) {
        EXPECT_FALSE(Read(other));
    }
    EXPECT_FALSE(ReadExif("/missing"));
    ExifInfo info;
    info.description = "KIVO (Normal),1X";
    info.dateTimeOriginal = "2026:01:31 23:59:58";
    const std::string jpeg = WithSegment(BuildExifSegment(info));
    std::minstd_rand random(3);
    int different = 0;
    for (int i = 0; i < 3000; ++i) {
        std::string damaged = jpeg.substr(0, i % 2 ? jpeg.size() : random() % jpeg.size());
        for (unsigned flips = random() % 5; flips > 0 && !damaged.empty(); --flips) {
            damaged[random() % std::min<std::size_t>(300, damaged.size())] =
                static_cast<char>(random());
        }
        const auto read = Read(damaged);
        different += !read || read->description != "KIVO (Normal),1X";
        EXPECT_TRUE(!read || read->description.size() < damaged.size());
    }
    EXPECT_GT(different, 1000);
}

}  // namespace
}  // namespace Osp::Media
