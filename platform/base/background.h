// Work off the loop thread.
#pragma once

#include <functional>

namespace Osp::Base {

/// Runs `job` on a worker thread and then `completion` on the loop, always and as a system event.
/// The loop counts the work as under way in between, so a virtual clock stands still meanwhile.
/// Jobs run in no particular order, a few at a time. Loop thread only.
void RunInBackground(std::function<void()> job, std::function<void()> completion);

}  // namespace Osp::Base
