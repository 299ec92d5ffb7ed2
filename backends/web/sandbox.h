// What has to be in order before the engine may start.
#pragma once

#include <string>

namespace Osp::Web {

/// The engine ends the whole process where it cannot start its sandbox, so that is tried first.
/// Empty when it can; else a sentence that says why not.
std::string WhyNoSandbox();

/// A session bus that is named but not there is named no more, for this process and those that it
/// starts: the engine's sandbox would leave a file of its own in the root folder on its behalf.
void ForgetMissingBus();

/// Once no view is left: removes what the engine's sandbox has put into the user's runtime folder
/// for this process and does not take away itself.
void RemoveSandboxTraces();

}  // namespace Osp::Web
