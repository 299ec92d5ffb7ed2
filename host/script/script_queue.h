// The commands that are still to be run.
#pragma once

#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <string>

#include "host/outcome.h"

namespace Host {

/// One line of a script and who wants to know when it is done.
struct ScriptLine {
    std::string text;
    int number = 0;
    std::function<void(const Outcome<>&)> done;  // on the loop thread; may be empty
};

/// Filled from a file, from standard input or by a test's own thread. Any thread.
class ScriptQueue {
  public:
    /// `wake` is called after every Add and Close, on the calling thread; may be empty.
    void SetWake(std::function<void()> wake);
    void Add(ScriptLine line);
    /// No further line will come.
    void Close();

    std::optional<ScriptLine> Take();
    /// Closed and empty.
    bool IsAtEnd() const;

  private:
    mutable std::mutex mutex_;
    std::deque<ScriptLine> lines_;
    bool isClosed_ = false;
    std::function<void()> wake_;
};

}  // namespace Host
