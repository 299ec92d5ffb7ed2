#include "share/wall/wall_page.h"

#include <cassert>

#include "share/wall/wall_layouts.h"

namespace Kivo {

using Osp::Base::String;

namespace {

constexpr const char* kHead =
    "<html><head><style>img,span { position:absolute; border:0px; overflow:hidden; }</style>"
    "</head><body style='background-color:#000000;'>";
constexpr const char* kFoot =
    "<div style='position:absolute; width:800px; height:30px; left:0px; top:0px; z-index:2; "
    "background-color:#666666; opacity:0.5;'></div>"
    "<div style='position:absolute; width:456px; height:20px; left:172px; top:5px; z-index:3; "
    "font-size:16pt; color:#FFFFFF;'>KIVO Walls : Photos from Twitter by shared on Twitpic</div>"
    "</body></html>";

void AppendCell(String& page, const WallCell& cell, const WallItem& item) {
    page.Append("<span style='width:").Append(cell.width).Append("px; height:");
    page.Append(cell.height).Append("px; top:").Append(cell.top).Append("px; left:");
    page.Append(cell.left).Append("px'><a href='").Append(item.link);
    page.Append("'><img style='display:block; top:").Append(cell.pictureTop);
    page.Append("px; left:").Append(cell.pictureLeft).Append("px' src='").Append(item.thumbnail);
    page.Append("' width=").Append(cell.pictureWidth).Append(" height=");
    page.Append(cell.pictureHeight).Append("></a></span>");
}

/// One of `choices`, which are not empty.
template <class Range>
const auto& Choose(const Range& choices, const std::function<int()>& rand) {
    const int number = rand();
    assert(number >= 0);
    return choices[static_cast<std::size_t>(number) % choices.size()];
}

}  // namespace

String ComposeWall(std::span<const WallItem> items, const std::function<int()>& rand) {
    if (items.empty()) return ComposeEmptyWall();
    String page(kHead);
    page.Append("<div>");
    for (const WallCell& cell : Choose(kWallLayouts, rand)) {
        AppendCell(page, cell, Choose(items, rand));
    }
    return page.Append("</div>").Append(kFoot);
}

String ComposeEmptyWall() {
    return String(kHead).Append(kFoot);
}

}  // namespace Kivo
