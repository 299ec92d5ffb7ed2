// The device's sound, and a record of what was played.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "osp/base/service.h"
#include "osp/media/sound/sound_output.h"

namespace Osp::Media {

/// Loop thread only.
class SoundService : public Service<SoundService> {
  public:
    /// Without an output everything is silent.
    explicit SoundService(std::unique_ptr<SoundOutput> output) : output_(std::move(output)) {}

    /// May be null.
    SoundOutput* GetOutput() const { return output_.get(); }

    void RecordStart(const std::string& virtualPath) { started_.push_back(virtualPath); }
    /// The virtual paths of the clips started since the last call, in order.
    std::vector<std::string> TakeStarted() { return std::exchange(started_, {}); }

  private:
    std::unique_ptr<SoundOutput> output_;
    std::vector<std::string> started_;
};

}  // namespace Osp::Media
