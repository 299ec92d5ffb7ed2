// The file that says where the services of this deployment are.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "host/outcome.h"

namespace Host {

struct Services {
    /// By name; empty: this deployment has none.
    std::map<std::string, std::string> hosts;
    bool isPlainHttpAllowed = false;
};

/// Reads the text of a file: the group "Services" with a host for each service and, if it likes,
/// "plain_http". The failure names what is wrong, without the file.
Outcome<Services> ParseServices(std::string_view text);

/// The failures name the file.
Outcome<Services> ReadServices(const std::string& path);

/// Fails unless `path` is a PEM file with a certificate in it.
Outcome<> CheckAuthorities(const std::string& path);

}  // namespace Host
