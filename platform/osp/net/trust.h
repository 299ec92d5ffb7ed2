// Whom connections are trusted to, by the application's and by the web pages' alike.
#pragma once

#include <string>

namespace Osp::Net {

struct Trust {
    /// A PEM file of authorities that are trusted beside the system's; empty: none.
    std::string authorityFile;
    /// Whether request bodies, which hold secrets, may go to other machines in the clear.
    bool isPlainHttpAllowed = false;
};

}  // namespace Osp::Net
