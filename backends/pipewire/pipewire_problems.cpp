#include "backends/pipewire/pipewire_problems.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <iterator>
#include <unistd.h>

namespace Osp::Media {

namespace {

constexpr const char* kDeviceFolder = "/dev";
constexpr const char* kDevicePrefix = "video";

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

std::string Joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : ", ") + word;
    return text;
}

std::string Unreached(const std::string& error) {
    return WithReason("no PipeWire daemon answers", error) +
           ": install pipewire and start its user service (systemctl --user start pipewire)";
}

std::string Unfound(const PipewireFacts& facts) {
    if (!facts.closedDevices.empty()) {
        return "this user may not open " + Joined(facts.closedDevices) +
               ": become a member of the group video and log in anew";
    }
    if (facts.isThroughPortal) return "the camera portal gives leave but shows no camera";
    if (facts.devices.empty()) return "the daemon has no camera, and none is connected here";
    return "the daemon has no camera, although there is " + Joined(facts.devices) +
           ": install libspa-0.2-modules (webcams) or libspa-0.2-libcamera (built-in cameras) and "
           "start wireplumber anew";
}

void ExplainUnconnected(const PipewireFacts& facts, BackendReport& report) {
    if (!facts.error.empty()) report.problems.push_back(Unreached(facts.error));
    if (facts.portal == nullptr) return;
    const auto& [state, reason, remote] = *facts.portal;
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
    if (!facts.hasCameras) report.problems.push_back(Unfound(facts));
}

std::vector<std::string> FindDevices() {
    std::vector<std::string> devices;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(kDeviceFolder, error)) {
        if (entry.path().filename().string().starts_with(kDevicePrefix)) {
            devices.push_back(entry.path());
        }
    }
    std::ranges::sort(devices);
    return devices;
}

std::vector<std::string> FilterClosed(const std::vector<std::string>& devices) {
    std::vector<std::string> closed;
    std::ranges::copy_if(devices, std::back_inserter(closed), [](const std::string& device) {
        return access(device.c_str(), R_OK | W_OK) != 0;
    });
    return closed;
}

}  // namespace Osp::Media
