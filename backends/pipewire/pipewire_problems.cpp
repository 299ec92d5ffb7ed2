#include "backends/pipewire/pipewire_problems.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace Osp::Media {

namespace {

/// By PortalState.
constexpr std::array kPortalWords = {
    "the camera portal has not answered yet: the desktop may be showing a question, and the "
    "cameras come as soon as it is answered",
    "",
    "no session bus, over which the camera portal is asked: start the program inside of a desktop "
    "session",
    "no camera portal on the session bus: install xdg-desktop-portal and the desktop's own portal "
    "beside it (xdg-desktop-portal-gtk, -gnome or -kde)",
    "the camera portal sees no camera; once there is one, it is asked",
    "the camera portal refuses the cameras: allow them in the desktop's privacy settings or, for "
    "a Flatpak, with \"flatpak permission-reset\" and the application's id; then start the "
    "program anew",
    "the question of the camera portal ended without an answer: start the program anew to be "
    "asked again",
    "the camera portal broke off; start the program anew to ask it again",
};
static_assert(kPortalWords.size() == static_cast<std::size_t>(PortalState::kFailed) + 1);

std::string WithReason(const std::string& words, const std::string& reason) {
    return reason.empty() ? words : words + " (" + reason + ")";
}

std::string Unreached(const std::string& error) {
    return WithReason("no PipeWire daemon answers", error) +
           ": install pipewire and start its user service (systemctl --user start pipewire)";
}

void ExplainMissing(const PipewireFacts& facts, BackendReport& report) {
    if (facts.isThroughPortal) {
        report.problems.emplace_back("the camera portal gives leave but shows no camera");
    } else if (!facts.fileProblems.empty()) {
        std::ranges::copy(facts.fileProblems, std::back_inserter(report.problems));
    } else {
        report.problems.emplace_back(
            "the daemon has no camera, although the kernel knows one: install libspa-0.2-modules "
            "(webcams) or libspa-0.2-libcamera (built-in cameras) and start wireplumber anew");
    }
}

void ExplainUnconnected(const PipewireFacts& facts, BackendReport& report) {
    if (!facts.error.empty()) report.problems.push_back(Unreached(facts.error));
    if (facts.portal == nullptr) return;
    const auto& [state, reason, remote] = *facts.portal;
    report.awaitsConsent = state == PortalState::kAsking;
    const std::string words = kPortalWords.at(static_cast<std::size_t>(state));
    if (!words.empty()) report.problems.push_back(WithReason(words, reason));
}

}  // namespace

void Explain(const PipewireFacts& facts, BackendReport& report) {
    if (facts.isSandboxed) report.notes.emplace_back("inside of a sandbox");
    if (!facts.isConnected) return ExplainUnconnected(facts, report);
    report.notes.emplace_back(facts.isThroughPortal ? "reached through the camera portal"
                                                    : "reached directly");
    if (!facts.isThroughPortal && !facts.hasSessionManager) {
        report.problems.emplace_back(
            "no session manager runs beside the daemon, so that nothing is connected: install "
            "wireplumber and start its user service (systemctl --user start wireplumber)");
    }
    if (!facts.hasCameras) ExplainMissing(facts, report);
}

}  // namespace Osp::Media
