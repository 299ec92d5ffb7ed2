// Where the platform's chance comes from.
#pragma once

#include <optional>
#include <random>
#include <span>

#include <osp/base/byte_buffer.h>

#include "osp/base/clock.h"
#include "osp/base/service.h"

namespace Osp::Base {

/// The operating system's under a real clock. Under a virtual one numbers and bytes are two
/// sequences, always the same, of which neither depends on how much is taken from the other. Loop
/// thread only.
class Randomness : public Service<Randomness> {
  public:
    explicit Randomness(const Clock& clock);

    /// From 0 to 2,147,483,647.
    int Number();
    /// False, and some of `bytes` are set, when the system has none to give.
    bool Fill(std::span<byte> bytes);

  private:
    std::mt19937 numbers_;
    std::optional<std::mt19937> bytes_;  // none: the system's own
};

}  // namespace Osp::Base
