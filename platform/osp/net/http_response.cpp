#include <osp/net/http/http_response.h>

#include "osp/base/values/buffer_copy.h"

namespace Osp::Net::Http {

Base::ByteBuffer* HttpResponse::ReadBodyN() const {
    return body_.empty() ? nullptr : Base::CopyToBuffer(body_).release();
}

}  // namespace Osp::Net::Http
