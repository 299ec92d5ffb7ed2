// What a process takes of the machine.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <unistd.h>

namespace Osp::Testing {

struct Usage {
    long memoryKb = 0;  // resident
    long threads = 0;
    long descriptors = 0;
};

inline Usage UsageOf(int process) {
    const std::string folder = "/proc/" + std::to_string(process);
    const auto count = [&folder](const char* name) {
        std::error_code none;
        return std::distance(std::filesystem::directory_iterator(folder + name, none), {});
    };
    long ignored = 0;
    long residentPages = 0;
    std::ifstream(folder + "/statm") >> ignored >> residentPages;
    return {residentPages * getpagesize() / 1024, count("/task"), count("/fd")};
}

}  // namespace Osp::Testing
