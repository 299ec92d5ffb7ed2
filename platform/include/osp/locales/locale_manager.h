// How the user wants times to be written.
#pragma once

#include <osp/base/object.h>
#include <osp/base/result.h>
#include <osp/locales/time_zone.h>

namespace Osp::Locales {

/// Loop thread only.
class LocaleManager : public Base::Object {
  public:
    /// kInvalidState when constructed already.
    result Construct();
    /// UTC in a run under a virtual clock, which is the same everywhere, and before Construct.
    TimeZone GetSystemTimeZone() const;

  private:
    bool isConstructed_ = false;
};

}  // namespace Osp::Locales
