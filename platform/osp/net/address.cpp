#include "osp/net/address.h"

#include <algorithm>
#include <charconv>
#include <glib.h>
#include <utility>

namespace Osp::Net {

namespace {

constexpr std::size_t kLongestName = 253;
constexpr std::size_t kLongestLabel = 63;
constexpr int kLastPort = 65535;

bool IsLabelCharacter(char c) {
    return g_ascii_isalnum(c) || c == '-';
}

bool IsLabel(std::string_view label) {
    return !label.empty() && label.size() <= kLongestLabel && label.front() != '-' &&
           label.back() != '-' && std::ranges::all_of(label, IsLabelCharacter);
}

bool IsName(std::string_view name) {
    if (name.size() > kLongestName) return false;
    for (std::size_t dot; (dot = name.find('.')) != std::string_view::npos;) {
        if (!IsLabel(name.substr(0, dot))) return false;
        name.remove_prefix(dot + 1);
    }
    return IsLabel(name);
}

bool IsBracketed(std::string_view host) {
    return host.starts_with('[') && host.ends_with(']');
}

std::string WithoutBrackets(std::string_view host) {
    return std::string(host.substr(1, host.size() - 2));
}

// A zone, which the library would take, has no place in a URL's host.
bool IsHost(std::string_view host) {
    if (!IsBracketed(host)) return IsName(host);
    const std::string inside = WithoutBrackets(host);
    return inside.find('%') == std::string::npos && inside.find(':') != std::string::npos &&
           g_hostname_is_ip_address(inside.c_str());
}

/// 0 for what is no port.
int ParsePort(std::string_view digits) {
    if (!std::ranges::all_of(digits, [](char c) { return g_ascii_isdigit(c); })) return 0;
    int port = 0;
    const auto end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, port);
    const bool isPort = error == std::errc() && stop == end && digits.front() != '0';
    return isPort && port <= kLastPort ? port : 0;
}

/// Whether the port of `text` begins there; the colons inside brackets are none of its.
std::size_t FindPort(std::string_view text) {
    const std::size_t bracket = text.rfind(']');
    return text.find(':', bracket == std::string_view::npos ? 0 : bracket);
}

}  // namespace

std::optional<Address> ParseAddress(std::string_view text) {
    const std::size_t colon = FindPort(text);
    const std::string_view host = text.substr(0, colon);
    if (!IsHost(host)) return std::nullopt;
    if (colon == std::string_view::npos) return Address{std::string(host), 0};
    const int port = ParsePort(text.substr(colon + 1));
    if (port == 0) return std::nullopt;
    return Address{std::string(host), port};
}

std::optional<Server> ParseServer(std::string_view text) {
    constexpr struct {
        std::string_view prefix;
        int port;
    } kSchemes[] = {{"http://", 80}, {"https://", 443}};
    for (const auto& scheme : kSchemes) {
        if (!text.starts_with(scheme.prefix)) continue;
        std::optional<Address> address = ParseAddress(text.substr(scheme.prefix.size()));
        if (!address) return std::nullopt;
        if (address->port == 0) address->port = scheme.port;
        return Server{scheme.port == 443, std::move(*address)};
    }
    return std::nullopt;
}

bool IsLocalhost(std::string_view host) {
    return g_ascii_strcasecmp(std::string(host).c_str(), "localhost") == 0;
}

bool IsLoopback(const std::string& host) {
    if (IsLocalhost(host) || host == "[::1]") return true;
    return host.starts_with("127.") && g_hostname_is_ip_address(host.c_str());
}

}  // namespace Osp::Net
