// Memory cards and sticks.
#pragma once

#include <string>
#include <sys/types.h>

namespace Osp::Io {

/// The mount point of the first writable removable medium that the desktop shows, or "".
std::string FindRemovableMedium();

/// Whether the block device `device` can be taken out, as the system tree at `sysFolder` ("/sys")
/// describes it: marked removable, an SD card, or anything on USB.
bool IsRemovableDevice(const std::string& sysFolder, dev_t device);

}  // namespace Osp::Io
