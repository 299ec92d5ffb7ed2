#include <osp/locales/locale_manager.h>

#include "osp/base/event_loop.h"

namespace Osp::Locales {

result LocaleManager::Construct() {
    if (isConstructed_) return result::kInvalidState;
    isConstructed_ = true;
    return result::kSuccess;
}

TimeZone LocaleManager::GetSystemTimeZone() const {
    const bool isVirtual = Base::EventLoop::Current().GetClock().IsVirtual();
    return isConstructed_ && !isVirtual ? TimeZone("") : TimeZone();
}

}  // namespace Osp::Locales
