// What clocks show at a place.
#pragma once

#include <string>
#include <utility>

#include <osp/base/date_time.h>

namespace Osp::Locales {

class TimeZone {
  public:
    /// UTC.
    TimeZone() = default;

    /// What the clocks of the zone show at that moment, daylight saving included.
    Base::DateTime UtcTimeToStandardTime(const Base::DateTime& utcTime) const;

  private:
    friend class LocaleManager;

    explicit TimeZone(std::string id) : id_(std::move(id)) {}

    std::string id_ = "UTC";  // empty: the system's
};

}  // namespace Osp::Locales
