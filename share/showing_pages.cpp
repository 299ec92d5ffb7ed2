#include "share/showing_pages.h"

#include "share/text/bytes.h"

namespace Kivo {

void ShowPage(Osp::Web::Controls::Web& web, const Osp::Base::String& baseUrl,
              const Osp::Base::ByteBuffer& page) {
    (void)web.LoadData(baseUrl, page, "text/html", "UTF-8");
}

void ShowPlaceholder(Osp::Web::Controls::Web& web) {
    const auto page = Utf8BytesOf("<html><body>Wait for loading</body></html>");
    if (page) ShowPage(web, kNowhere, *page);
}

}  // namespace Kivo
