// Whom a view trusts beside the system's authorities.
#pragma once

#include <gio/gio.h>
#include <string>

#include "osp/base/owner.h"

namespace Osp::Web {

class Authorities {
  public:
    /// A file of PEM certificates; empty for none. One that cannot be read adds none.
    explicit Authorities(const std::string& authorityFile);

    /// Whether those vouch for `certificate` as that of `host`, in every respect.
    bool Vouches(GTlsCertificate* certificate, const std::string& host) const;

  private:
    Base::Owner<GTlsDatabase, g_object_unref> database_;  // null without a file
};

}  // namespace Osp::Web
