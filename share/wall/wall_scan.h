// The search results that the photo wall is made of.
#pragma once

#include <vector>

#include <osp/base/string.h>

namespace Kivo {

struct WallItem {
    Osp::Base::String link;
    Osp::Base::String thumbnail;
};

/// The results in the answer of the search service, in their order. The answer is searched for
/// names and commas, not parsed; what is not there ends the search, and time is linear in its
/// length. Results are left out whose addresses are not of the web, are longer than any should be
/// or could get out of the page that they are put into.
std::vector<WallItem> ScanWall(Osp::Base::String answer);

}  // namespace Kivo
