#include "tests/support/programs/program.h"

#include <cstdlib>
#include <filesystem>
#include <gio/gio.h>
#include <gtest/gtest.h>

namespace Kivo::Testing {

std::string ProgramFolder() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

void CameraProgram::End(GSubprocess* process) {
    g_subprocess_force_exit(process);
    g_subprocess_wait(process, nullptr, nullptr);
    g_object_unref(process);
}

CameraProgram::CameraProgram(const std::vector<std::string>& arguments,
                             const std::map<std::string, std::string>& environment,
                             const std::string& program) {
    const std::string path = ProgramFolder() + "/" + program;
    std::vector<const char*> words{path.c_str()};
    for (const std::string& argument : arguments) words.push_back(argument.c_str());
    words.push_back(nullptr);
    GError* error = nullptr;
    constexpr int kAllPipes = G_SUBPROCESS_FLAGS_STDIN_PIPE | G_SUBPROCESS_FLAGS_STDOUT_PIPE |
                              G_SUBPROCESS_FLAGS_STDERR_PIPE;
    GSubprocessLauncher* const launcher =
        g_subprocess_launcher_new(static_cast<GSubprocessFlags>(kAllPipes));
    for (const auto& [name, value] : environment) {
        g_subprocess_launcher_setenv(launcher, name.c_str(), value.c_str(), TRUE);
    }
    process_.reset(g_subprocess_launcher_spawnv(launcher, words.data(), &error));
    g_object_unref(launcher);
    if (error == nullptr) return;
    ADD_FAILURE() << error->message;
    std::abort();  // nothing that follows makes sense
}

CameraProgram::~CameraProgram() = default;

int CameraProgram::Id() const {
    return std::atoi(g_subprocess_get_identifier(process_.get()));
}

bool CameraProgram::HasEnded() const {
    return g_subprocess_get_identifier(process_.get()) == nullptr;
}

void CameraProgram::Send(const std::string& line) {
    const std::string text = line + "\n";
    GOutputStream* const input = g_subprocess_get_stdin_pipe(process_.get());
    EXPECT_TRUE(
        g_output_stream_write_all(input, text.data(), text.size(), nullptr, nullptr, nullptr));
}

std::string CameraProgram::ReadLine() {
    GInputStream* const output = g_subprocess_get_stdout_pipe(process_.get());
    std::string line;
    for (char c = 0; g_input_stream_read(output, &c, 1, nullptr, nullptr) == 1 && c != '\n';) {
        line += c;
    }
    return line;
}

void CameraProgram::Kill() {
    g_subprocess_force_exit(process_.get());
    g_subprocess_wait(process_.get(), nullptr, nullptr);
}

ProgramResult CameraProgram::Finish() {
    GBytes* const input = g_bytes_new(nullptr, 0);
    GBytes* output = nullptr;
    GBytes* errors = nullptr;
    g_subprocess_communicate(process_.get(), input, nullptr, &output, &errors, nullptr);
    g_bytes_unref(input);
    const auto take = [](GBytes* bytes) {
        gsize size = 0;
        const auto* const data = static_cast<const char*>(g_bytes_get_data(bytes, &size));
        std::string text(data, data + size);
        g_bytes_unref(bytes);
        return text;
    };
    const bool hasExited = g_subprocess_get_if_exited(process_.get()) != FALSE;
    return {.exitCode = hasExited ? g_subprocess_get_exit_status(process_.get()) : -1,
            .output = take(output),
            .errors = take(errors)};
}

ProgramResult RunScript(const std::vector<std::string>& arguments,
                        std::initializer_list<const char*> lines) {
    std::vector<std::string> all{"--headless", "--script", "-"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    CameraProgram program(all);
    for (const char* line : lines) program.Send(line);
    return program.Finish();
}

}  // namespace Kivo::Testing
