// What a request asks for.
#pragma once

namespace Osp::Net::Http {

enum class HttpMethod { kGet, kPost };

}  // namespace Osp::Net::Http
