// What the system's files say of video devices, whoever brings their pictures.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Osp::Media {

/// A name for the device file `device` that stays the same across restarts and ports: its link in
/// by-id or else by-path below `links`, else `bus`, else the file itself. `bus` is where the driver
/// says that the device is; it may be empty.
std::string StableName(const std::filesystem::path& device, const std::string& bus,
                       const std::filesystem::path& links = "/dev/v4l");

/// Whether `path`, which need not exist, leads to the device file `device`.
bool LeadsTo(const std::filesystem::path& path, const std::filesystem::path& device);

/// The names of the other programs that have the device open, each once, as far as we may look.
std::vector<std::string> UsersOf(const std::filesystem::path& device,
                                 const std::filesystem::path& processes = "/proc");

/// Why the devices in `folder` cannot be seen by this user, and what helps; one sentence each.
std::vector<std::string> ProblemsWithFiles(const std::filesystem::path& folder = "/dev");

}  // namespace Osp::Media
