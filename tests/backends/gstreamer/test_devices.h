// Cameras that GStreamer's own test elements play.
#pragma once

#include <gst/gst.h>
#include <string>
#include <vector>

namespace Osp::Testing {

/// What a device of the provider below is.
struct TestDevice {
    std::string name;
    std::string caps;
    std::string element;     // as in a pipeline's description
    std::string properties;  // of a serialised structure, without its name
    const char* deviceClass = "Video/Source";
};

/// The name of a device provider that tells of cameras that come and go, and of one that does not.
inline constexpr const char* kAnnouncingProvider = "kivotestannouncer";
inline constexpr const char* kSilentProvider = "kivotestlister";

/// Sources that refuse to begin: as busy; as what cannot be opened because it is busy; without a
/// word, after a second and a half.
inline constexpr const char* kBusyElement = "kivotestbusy";
inline constexpr const char* kTakenElement = "kivotesttaken";
inline constexpr const char* kSlowElement = "kivotestslow";
/// How often the last has been asked to begin.
int SlowStarts();

/// Registers all of these; from now on they have these devices.
void Provide(const std::vector<TestDevice>& devices);
/// Announced by the announcing provider, which must have been started.
void PlugIn(const TestDevice& device);
void PullOut(const std::string& name);

}  // namespace Osp::Testing
