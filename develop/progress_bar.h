// How far a long job has come, on a terminal.
#pragma once

namespace Kivo::Tools {

/// Draws on standard error, and only if that is a terminal.
class ProgressBar {
  public:
    explicit ProgressBar(int total);
    /// Takes the bar away.
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void Show(int done);

  private:
    int total_;
    bool isTerminal_;
};

}  // namespace Kivo::Tools
