// What a run tells benchmarks and tests about itself.
#pragma once

#include "osp/base/service.h"

namespace Osp::Base {

/// Nothing listens unless a benchmark has installed an observer. Loop thread only.
class Trace : public Service<Trace> {
  public:
    virtual ~Trace() = default;
    /// `stage` is a literal.
    virtual void OnMark(const char* stage) = 0;
    /// `name` is valid during the call only.
    virtual void OnValue(const char* /*name*/, long long /*value*/) {}

    static void Mark(const char* stage) {
        if (IsInstalled()) Current().OnMark(stage);
    }
    static void Value(const char* name, long long value) {
        if (IsInstalled()) Current().OnValue(name, value);
    }
};

}  // namespace Osp::Base
