#include "osp/base/randomness.h"

#include <algorithm>
#include <cerrno>
#include <sys/random.h>

namespace Osp::Base {

namespace {

bool FillFromSystem(std::span<byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = getrandom(bytes.data(), bytes.size(), 0);
        if (count < 0 && errno != EINTR) return false;
        bytes = bytes.subspan(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    return true;
}

}  // namespace

Randomness::Randomness(const Clock& clock) {
    if (clock.IsVirtual()) {
        bytes_.emplace();
    } else {
        numbers_.seed(std::random_device{}());
    }
}

// The standard fixes what this engine yields; its distributions differ from library to library.
int Randomness::Number() {
    return static_cast<int>(numbers_() >> 1);
}

bool Randomness::Fill(std::span<byte> bytes) {
    if (!bytes_) return FillFromSystem(bytes);
    std::ranges::generate(bytes, [this] { return static_cast<byte>((*bytes_)() >> 24); });
    return true;
}

}  // namespace Osp::Base
