// Receives what is not shown.
#pragma once

#include <osp/base/byte_buffer.h>

namespace Osp::Web::Controls {

/// From the loop.
class IWebDownloadListener {
  public:
    virtual ~IWebDownloadListener() = default;
    /// The next of the chunks that an answer comes in, all that remains of `chunk`; one up to 2 MiB
    /// comes as one. `chunk` is valid only for the call.
    virtual void OnWebChunkedDataReceived(const Base::ByteBuffer& chunk) = 0;
};

}  // namespace Osp::Web::Controls
