#include "tests/support/programs/process.h"

#include <algorithm>
#include <cstdlib>
#include <gio/gio.h>
#include <gio/gunixinputstream.h>
#include <gtest/gtest.h>
#include <poll.h>

namespace Osp::Testing {

namespace {

GSubprocessFlags FlagsOf(Process::Pipes pipes) {
    constexpr int kFlags[] = {G_SUBPROCESS_FLAGS_NONE,
                              G_SUBPROCESS_FLAGS_STDIN_PIPE | G_SUBPROCESS_FLAGS_STDOUT_PIPE,
                              G_SUBPROCESS_FLAGS_STDOUT_PIPE | G_SUBPROCESS_FLAGS_STDERR_SILENCE};
    return static_cast<GSubprocessFlags>(kFlags[static_cast<int>(pipes)]);
}

GSubprocess* Spawn(const std::vector<std::string>& words, Process::Pipes pipes) {
    std::vector<const char*> list;
    for (const std::string& word : words) list.push_back(word.c_str());
    list.push_back(nullptr);
    GError* error = nullptr;
    GSubprocess* const process = g_subprocess_newv(list.data(), FlagsOf(pipes), &error);
    if (process == nullptr) {
        ADD_FAILURE() << error->message;
        std::abort();  // nothing that follows makes sense
    }
    return process;
}

bool HasInput(int file, std::chrono::milliseconds limit) {
    pollfd polled{file, POLLIN, 0};
    return poll(&polled, 1, static_cast<int>(limit.count())) > 0;
}

}  // namespace

Process::Process(const std::vector<std::string>& words, Pipes pipes)
    : process_(Spawn(words, pipes)) {}

Process::~Process() {
    End();
    g_object_unref(process_);
}

bool Process::HasEnded() const {
    return g_subprocess_get_identifier(process_) == nullptr;
}

void Process::End(int signal) {
    g_subprocess_send_signal(process_, signal);
    g_subprocess_wait(process_, nullptr, nullptr);
}

bool Process::Succeeds() {
    return g_subprocess_wait_check(process_, nullptr, nullptr) != FALSE;
}

void Process::Send(const std::string& line) {
    std::signal(SIGPIPE, SIG_IGN);  // it may have ended
    const std::string text = line + "\n";
    g_output_stream_write_all(g_subprocess_get_stdin_pipe(process_), text.data(), text.size(),
                              nullptr, nullptr, nullptr);
}

std::optional<std::string> Process::ReadLine(std::chrono::milliseconds limit) {
    using Clock = std::chrono::steady_clock;
    GInputStream* const stream = g_subprocess_get_stdout_pipe(process_);
    const int file = g_unix_input_stream_get_fd(G_UNIX_INPUT_STREAM(stream));
    const auto end = Clock::now() + limit;
    for (;;) {
        const std::size_t newline = output_.find('\n');
        if (newline != std::string::npos) {
            std::string line = output_.substr(0, newline);
            output_.erase(0, newline + 1);
            return line;
        }
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
        char block[4096];
        if (!HasInput(file, std::max(left, std::chrono::milliseconds(0)))) return {};
        const gssize count = g_input_stream_read(stream, block, sizeof block, nullptr, nullptr);
        if (count <= 0) return {};
        output_.append(block, static_cast<std::size_t>(count));
    }
}

std::string OutputOf(const std::vector<std::string>& words) {
    Process process(words, Process::Pipes::kOutputAlone);
    std::string output;
    while (const auto line = process.ReadLine(std::chrono::seconds(10))) output += *line + "\n";
    return output;
}

}  // namespace Osp::Testing
