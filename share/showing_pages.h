// Pages that the application itself gives a web control to show.
#pragma once

#include <osp/base/byte_buffer.h>
#include <osp/base/string.h>
#include <osp/web/controls/web.h>

namespace Kivo {

/// What remains of `page`, which is HTML in UTF-8. What fails leaves the control as it was.
void ShowPage(Osp::Web::Controls::Web& web, const Osp::Base::String& baseUrl,
              const Osp::Base::ByteBuffer& page);
/// Pages that come from nowhere.
inline constexpr const char* kNowhere = "localhost";
/// Until there is something to be seen.
void ShowPlaceholder(Osp::Web::Controls::Web& web);

}  // namespace Kivo
