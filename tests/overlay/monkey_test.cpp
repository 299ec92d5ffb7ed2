// Somebody who plays with the camera without looking.
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>

#include "media/camera_service.h"
#include "support/jpeg.h"
#include "support/phone.h"

namespace Kivo {
namespace {

using namespace Testing;

constexpr int kEvents = 20000;

/// What a monkey does next.
class Monkey {
  public:
    explicit Monkey(unsigned seed) : random_(seed) {}

    std::string Next() {
        const int dice = Below(100);
        if (dice < 30) return "press " + Place();
        if (dice < 50) return "move " + Place();
        if (dice < 75) return "release " + Place();
        if (dice < 82) return "key camera";
        if (dice < 90) return "wait " + std::to_string(Below(60));
        if (dice < 92) return "wait " + std::to_string(Below(900));
        if (dice < 94) return "background";
        if (dice < 96) return "foreground";
        if (dice < 97) return Below(2) == 0 ? "unplug primary" : "unplug secondary";
        return Below(2) == 0 ? "plug primary" : "plug secondary";
    }

  private:
    int Below(unsigned n) { return static_cast<int>(random_() % n); }

    // Mostly where something is.
    std::string Place() {
        static constexpr int kPlaces[][2] = {{736, 228}, {618, 425}, {500, 425}, {382, 425},
                                             {264, 425}, {40, 425},  {700, 20},  {20, 230},
                                             {750, 50},  {190, 44},  {300, 60},  {400, 240}};
        const auto& place = kPlaces[Below(std::size(kPlaces))];
        const bool anywhere = Below(4) == 0;
        const int x = anywhere ? Below(900) - 50 : place[0] + Below(80) - 40;
        const int y = anywhere ? Below(580) - 50 : place[1] + Below(40) - 20;
        return std::to_string(x) + " " + std::to_string(y);
    }

    std::mt19937 random_;
};

// KIVO_MONKEY_EVENTS asks for a longer run.
int EventCount() {
    const char* asked = std::getenv("KIVO_MONKEY_EVENTS");
    return asked == nullptr ? kEvents : std::atoi(asked);
}

TEST(Monkey, LeavesACameraThatTakesAPhotographWithOneTap) {
    constexpr int kRounds = 10;
    for (int round = 0; round < kRounds; ++round) {
        SCOPED_TRACE("seed " + std::to_string(round));
        Monkey monkey(static_cast<unsigned>(round));
        Phone phone({.registry = {{"CAM_TYPE", std::to_string(round % 6)},
                                  {"CAPTURE_WIDTH", 640},
                                  {"CAPTURE_HEIGHT", 480}}});
        phone.Do({"await preview", "wait 100"});
        for (int i = 0; i < EventCount() / kRounds; ++i) {
            // A camera cannot be plugged in twice; whoever says so is right.
            (void)phone.Try(monkey.Next());
            ASSERT_FALSE(phone.HasEnded()) << "after event " << i;
        }
        (void)phone.Try("plug primary");
        (void)phone.Try("plug secondary");
        phone.Do({"release 400 100", "foreground", "wait 500"});
        phone.Do({"tap 750 50", "wait 10000"});  // closes the help
        const std::size_t before = phone.Photos().size();
        phone.Do({"tap 736 228", "wait 8000"});
        // Of a double exposure it may be the first press of two.
        const bool isMix = round % 6 == 4;
        if (isMix && phone.Photos().size() == before) phone.Do({"tap 736 228", "wait 8000"});
        EXPECT_GT(phone.Photos().size(), before);
        for (const std::string& photo : phone.Photos()) EXPECT_TRUE(IsWholeJpeg(photo)) << photo;
    }
}

}  // namespace
}  // namespace Kivo
