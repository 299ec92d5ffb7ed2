#include "develop/interruption.h"

#include <atomic>

namespace Kivo::Tools {

namespace {

std::atomic<bool> hasCome = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler writes it");

void Note(int number, struct sigaction& old) {
    struct sigaction note {};
    note.sa_handler = [](int) { hasCome = true; };
    note.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    sigaction(number, nullptr, &old);
    // Whoever started this program with signals ignored means it.
    if (old.sa_handler != SIG_IGN) sigaction(number, &note, nullptr);
}

}  // namespace

Interruption::Interruption() {
    hasCome = false;
    Note(SIGINT, oldInterrupt_);
    Note(SIGTERM, oldTerminate_);
}

Interruption::~Interruption() {
    sigaction(SIGINT, &oldInterrupt_, nullptr);
    sigaction(SIGTERM, &oldTerminate_, nullptr);
}

bool Interruption::HasCome() const {
    return hasCome;
}

}  // namespace Kivo::Tools
