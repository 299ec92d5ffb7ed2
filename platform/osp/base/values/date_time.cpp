#include <glib.h>

#include <osp/base/date_time.h>

#include "osp/base/owner.h"

namespace Osp::Base {

String DateTime::ToString() const {
    const Owner<GDateTime, g_date_time_unref> time(g_date_time_new_from_unix_utc(ms_ / 1000));
    if (!time) return {};
    const Owner<char, g_free> text(g_date_time_format(time.get(), "%m/%d/%Y %H:%M"));
    return text.get();
}

}  // namespace Osp::Base
