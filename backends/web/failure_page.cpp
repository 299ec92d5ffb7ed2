#include "backends/web/failure_page.h"

#include <glib.h>

#include "osp/base/owner.h"

namespace Osp::Web {

namespace {

using Text = Base::Owner<char, g_free>;

constexpr const char* kHead =
    "<!DOCTYPE html><html><head><meta charset='UTF-8'><style>"
    "body { margin: 0; background: #EDE4D2; color: #404040; font: 24px Cabin, sans-serif; }"
    "main { margin: 24px; padding: 32px; border-radius: 20px; background: #FAF5EA; }"
    "h1 { margin: 0 0 16px; font-size: 28px; color: #1C1A17; } p { margin: 0 0 8px; }"
    "main { overflow-wrap: anywhere; } a { color: #9E2612; }</style></head><body><main>";
constexpr const char* kFoot = "<p>Close goes back.</p></main></body></html>";

std::string Escaped(const std::string& text) {
    const Text escaped(g_markup_escape_text(text.c_str(), -1));
    return escaped.get();
}

}  // namespace

std::string FailurePage(const std::string& title, const std::string& reason,
                        const std::string& retryUrl) {
    std::string page = std::string(kHead) + "<h1>" + Escaped(title) + "</h1>";
    if (!reason.empty()) page += "<p>" + Escaped(reason) + "</p>";
    if (!retryUrl.empty()) page += "<p><a href='" + Escaped(retryUrl) + "'>Try again</a></p>";
    return page + kFoot;
}

std::string HostOf(const std::string& url) {
    const auto flags = static_cast<GUriFlags>(G_URI_FLAGS_ENCODED | G_URI_FLAGS_PARSE_RELAXED);
    char* host = nullptr;
    g_uri_split_network(url.c_str(), flags, nullptr, &host, nullptr, nullptr);
    const Text owner(host);
    return host == nullptr ? url : host;
}

}  // namespace Osp::Web
