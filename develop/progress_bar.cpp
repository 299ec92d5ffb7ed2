#include "develop/progress_bar.h"

#include <cstdio>
#include <string_view>
#include <unistd.h>

namespace Kivo::Tools {

namespace {

constexpr std::string_view kFull = "########################################";
constexpr std::string_view kEmpty = "........................................";
static_assert(kFull.size() == kEmpty.size());
constexpr const char* kClearLine = "\r\033[K";

}  // namespace

ProgressBar::ProgressBar(int total) : total_(total), isTerminal_(isatty(STDERR_FILENO) != 0) {
    Show(0);
}

ProgressBar::~ProgressBar() {
    if (isTerminal_) std::fputs(kClearLine, stderr);
}

void ProgressBar::Show(int done) {
    if (!isTerminal_) return;
    const int filled = static_cast<int>(kFull.size()) * done / total_;
    const int empty = static_cast<int>(kEmpty.size()) - filled;
    std::fprintf(stderr, "%s[%.*s%.*s] %d of %d", kClearLine, filled, kFull.data(), empty,
                 kEmpty.data(), done, total_);
    std::fflush(stderr);
}

}  // namespace Kivo::Tools
