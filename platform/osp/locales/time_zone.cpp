#include <glib.h>

#include <osp/locales/time_zone.h>

#include "osp/base/owner.h"

namespace Osp::Locales {

Base::DateTime TimeZone::UtcTimeToStandardTime(const Base::DateTime& utcTime) const {
    const Base::Owner<GTimeZone, g_time_zone_unref> zone(id_.empty() ? g_time_zone_new_local()
                                                                     : g_time_zone_new_utc());
    constexpr long long kMsASecond = 1000;
    const int interval =
        g_time_zone_find_interval(zone.get(), G_TIME_TYPE_UNIVERSAL, utcTime.GetMs() / kMsASecond);
    const long long offsetMs = g_time_zone_get_offset(zone.get(), interval) * kMsASecond;
    return Base::DateTime(utcTime.GetMs() + offsetMs);
}

}  // namespace Osp::Locales
