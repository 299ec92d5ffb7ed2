// Hears what the web control loads.
#pragma once

#include <osp/base/string.h>

namespace Osp::Web::Controls {

enum class DecisionPolicy {
    kRender,    ///< show it
    kDownload,  ///< hand it over in chunks instead, as it comes
};

/// From the loop.
class ILoadingListener {
  public:
    virtual ~ILoadingListener() = default;
    /// The page is there. Not for what failed or was handed over in chunks.
    virtual void OnLoadingCompleted() = 0;
    /// The main frame's answer from `url`, with success, has begun to come; what is to become of
    /// it. Not asked for what the application itself has given the control to show.
    virtual DecisionPolicy OnLoadingDecision(const Base::String& url) = 0;
};

}  // namespace Osp::Web::Controls
