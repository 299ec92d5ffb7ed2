// Memory that threads share by leave.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <string>

namespace Kivo::Tools {

/// How much memory developing the picture in a file takes at most, whatever the recipe. What does
/// not tell its size early counts as the largest there can be.
std::size_t NeededBytes(const std::string& path);

/// Keeps a batch below 1 GB. Any thread.
class MemoryBudget {
  public:
    /// More than there is counts as all there is. Waits until so much is free; whoever waits holds
    /// nothing, so that the others come to an end.
    void Take(std::size_t bytes);
    void Give(std::size_t bytes);

  private:
    std::mutex mutex_;  // guards what follows
    std::condition_variable given_;
    std::size_t taken_ = 0;
};

}  // namespace Kivo::Tools
