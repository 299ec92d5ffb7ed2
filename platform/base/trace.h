// Marks where a photograph is on its way, for benchmarks.
#pragma once

#include "base/service.h"

namespace Osp::Base {

/// Nothing listens unless a benchmark has installed an observer. Loop thread only.
class Trace : public Service<Trace> {
  public:
    virtual ~Trace() = default;
    /// `stage` is a literal.
    virtual void OnMark(const char* stage) = 0;

    static void Mark(const char* stage) {
        if (IsInstalled()) Current().OnMark(stage);
    }
};

}  // namespace Osp::Base
