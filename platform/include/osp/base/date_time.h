// A moment as calendars and clocks show it.
#pragma once

#include <osp/base/string.h>

namespace Osp::Base {

/// A point in time to the millisecond, of no time zone by itself. Any thread.
class DateTime {
  public:
    DateTime() = default;
    /// Milliseconds since midnight of 1 January 1970.
    explicit DateTime(long long ms) : ms_(ms) {}

    long long GetMs() const { return ms_; }
    /// "11/22/2011 21:34": month, day, year, hours of 24, minutes. Years from 1 to 9999; empty
    /// beyond.
    String ToString() const;

  private:
    long long ms_ = 0;
};

}  // namespace Osp::Base
