// Ending early without leaving anything half done.
#pragma once

#include <csignal>

namespace Kivo::Tools {

/// While one exists, the first Ctrl-C, or request to terminate, is only noted; the second ends the
/// process as ever. One at a time.
class Interruption {
  public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    /// Any thread.
    bool HasCome() const;

  private:
    struct sigaction oldInterrupt_ {};
    struct sigaction oldTerminate_ {};
};

}  // namespace Kivo::Tools
