#include "backends/pipewire/pipewire_problems.h"

#include <gtest/gtest.h>

namespace Osp::Media {
namespace {

/// The problems, each on a line.
std::string Problems(const PipewireFacts& facts) {
    BackendReport report;
    Explain(facts, report);
    std::string text;
    for (const std::string& problem : report.problems) text += problem + "\n";
    return text;
}

bool Says(const std::string& text, std::string_view words) {
    return text.find(words) != std::string::npos;
}

TEST(PipewireProblemsTest, APortalsAnswerStandsForItselfWhereNoDaemonWasDialled) {
    const PortalAnswer answer{PortalState::kRefused, "its reason", {}};
    const std::string text = Problems({.isSandboxed = true, .portal = &answer});
    EXPECT_TRUE(Says(text, "flatpak permission-reset") && Says(text, "(its reason)")) << text;
    EXPECT_FALSE(Says(text, "daemon")) << text;
    for (const auto state : {PortalState::kAsking, PortalState::kRefused}) {
        const PortalAnswer given{state, "", {}};
        BackendReport report;
        Explain({.isSandboxed = true, .portal = &given}, report);
        EXPECT_EQ(report.awaitsConsent, state == PortalState::kAsking);
    }
}

TEST(PipewireProblemsTest, ADaemonThatIsNotThereOrShowsNothingSaysWhatToInstall) {
    PipewireFacts facts{.isConnected = true, .hasSessionManager = true, .hasCameras = true};
    EXPECT_EQ(Problems(facts), "");
    facts.hasSessionManager = false;
    EXPECT_TRUE(Says(Problems(facts), "install wireplumber"));
    facts.isThroughPortal = true;
    EXPECT_EQ(Problems(facts), "") << "the portal hides the session manager";
    facts = {.isConnected = true, .hasSessionManager = true};
    EXPECT_TRUE(Says(Problems(facts), "libspa-0.2-modules"));
    facts.fileProblems = {"no permission for /dev/video1"};
    EXPECT_TRUE(Says(Problems(facts), "/dev/video1"));
    EXPECT_FALSE(Says(Problems(facts), "install"));
}

}  // namespace
}  // namespace Osp::Media
