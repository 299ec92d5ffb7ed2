// Other programs that a test runs, and waiting for what they do.
#pragma once

#include <chrono>
#include <csignal>
#include <optional>
#include <string>
#include <thread>
#include <vector>

typedef struct _GSubprocess GSubprocess;

namespace Osp::Testing {

/// A program that is ended with the object, at the latest.
class Process {
  public:
    enum class Pipes { kNone, kInputAndOutput, kOutputAlone /* no complaints */ };

    /// Ends the test program when there is no such program.
    explicit Process(const std::vector<std::string>& words, Pipes pipes = Pipes::kNone);
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    bool HasEnded() const;
    /// Sends the signal and waits for the end.
    void End(int signal = SIGTERM);
    /// Waits for the end; whether the exit code is 0.
    bool Succeeds();

    /// One line to its input; nothing happens when it does not listen any more.
    void Send(const std::string& line);
    /// Its next line; nothing at the end of its output or when none comes in time.
    std::optional<std::string> ReadLine(std::chrono::milliseconds limit);

  private:
    GSubprocess* process_;  // owned
    std::string output_;    // that is not yet read
};

/// What a program prints until its end, without complaints on standard error.
std::string OutputOf(const std::vector<std::string>& words);

template <class Condition>
bool Within(std::chrono::milliseconds limit, const Condition& condition) {
    using Clock = std::chrono::steady_clock;
    for (const auto end = Clock::now() + limit; Clock::now() < end;) {
        if (condition()) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return condition();
}

}  // namespace Osp::Testing
