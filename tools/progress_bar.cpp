#include "progress_bar.h"

#include <cstdio>
#include <string>
#include <unistd.h>

namespace Kivo::Tools {

namespace {

constexpr int kWidth = 40;
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
    const auto filled = static_cast<std::size_t>(kWidth * done / total_);
    const std::string bar = std::string(filled, '#') + std::string(kWidth - filled, '.');
    std::fprintf(stderr, "%s[%s] %d of %d", kClearLine, bar.c_str(), done, total_);
    std::fflush(stderr);
}

}  // namespace Kivo::Tools
