// Any answer of the search: the page that is made of it is the one that is meant to be.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "share/wall/wall_page.h"
#include "share/wall/wall_scan.h"

namespace {

using Kivo::WallItem;
using Osp::Base::String;

/// What is no address: everything but what stands between the quotation marks of links and sources.
std::string FrameOf(const String& page) {
    std::string text = page.ToUtf8();
    for (const std::string_view mark : {"<a href='", "' src='"}) {
        for (std::size_t at = 0; (at = text.find(mark, at)) != text.npos;) {
            at += mark.size();
            text.erase(at, text.find('\'', at) - at);
        }
    }
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t count) {
    const String text(std::string_view(reinterpret_cast<const char*>(data), count));
    const std::vector<WallItem> items = Kivo::ScanWall(text);
    int next = static_cast<int>(count);
    const String page = Kivo::ComposeWall(items, [&next] { return next++; });
    const WallItem plain{"http://p/", "http://t/"};
    next = static_cast<int>(count);
    const auto expected = items.empty()
                              ? Kivo::ComposeEmptyWall()
                              : Kivo::ComposeWall({&plain, 1}, [&next] { return next++; });
    if (FrameOf(page) != FrameOf(expected)) std::abort();
    return 0;
}
