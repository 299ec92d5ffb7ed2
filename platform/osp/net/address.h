// Where a server is: a host, perhaps with a port.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Osp::Net {

struct Address {
    std::string host;  // as in a URL: an IPv6 address in its brackets
    int port = 0;      // 0: that of the scheme
};

/// Reads "host" or "host:port", strictly, because such texts are put into URLs: names of letters,
/// digits, "-" and ".", IPv4 and bracketed IPv6 addresses, ports from 1 to 65535; nothing else, no
/// space, no zeros before a port.
std::optional<Address> ParseAddress(std::string_view text);

struct Server {
    bool isSecure = false;
    Address address;  // with its port, that of the scheme if no other is given
};

/// Reads the same after "http://" or "https://", with nothing behind.
std::optional<Server> ParseServer(std::string_view text);

/// Whether `host`, as ParseAddress gives it, names this machine by itself: "localhost", 127.0.0.0/8
/// or [::1]. Other names do not, whatever they lead to.
bool IsLoopback(const std::string& host);

/// The name whose meaning is fixed here and asked of nobody.
bool IsLocalhost(std::string_view host);

}  // namespace Osp::Net
