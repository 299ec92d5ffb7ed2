// The engine's words about what it cannot show, as pages of our own.
#pragma once

#include <string>

namespace Osp::Web {

/// A whole page in HTML, of plain texts. `retryUrl` is where a link goes that tries again; empty
/// for none.
std::string FailurePage(const std::string& title, const std::string& reason,
                        const std::string& retryUrl);

/// The host of a URL, or all of it when it has none.
std::string HostOf(const std::string& url);

}  // namespace Osp::Web
