#include "backends/v4l2/video_files.h"

#include <algorithm>
#include <cctype>
#include <fcntl.h>
#include <fstream>
#include <glib.h>
#include <grp.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace Osp::Media {

namespace {

namespace fs = std::filesystem;

/// In the order of names; empty where nobody may look.
std::vector<fs::path> Entries(const fs::path& folder) {
    std::error_code error;
    std::vector<fs::path> entries;
    for (fs::directory_iterator i(folder, error), end; !error && i != end; i.increment(error)) {
        entries.push_back(i->path());
    }
    std::ranges::sort(entries);
    return entries;
}

std::string NameOfProcess(const fs::path& process) {
    std::ifstream stream(process / "comm");
    std::string name;
    std::getline(stream, name);
    return name.empty() ? "process " + process.filename().string() : name;
}

bool HasOpen(const fs::path& process, const fs::path& device) {
    return std::ranges::any_of(Entries(process / "fd"), [&device](const fs::path& descriptor) {
        std::error_code error;
        return fs::read_symlink(descriptor, error) == device;
    });
}

bool IsOtherProcess(const std::string& name) {
    return std::ranges::all_of(name, [](unsigned char c) { return std::isdigit(c) != 0; }) &&
           name != std::to_string(getpid());
}

std::string HowToBeAllowed(const fs::path& device) {
    struct stat status {};
    if (stat(device.c_str(), &status) != 0) return {};
    const ::group* const owner = getgrgid(status.st_gid);
    if ((status.st_mode & S_IRGRP) == 0 || owner == nullptr) return {};
    const std::string group = owner->gr_name;
    return "; it belongs to the group " + group + ": join it (sudo usermod -aG " + group + " " +
           g_get_user_name() + ") and log in again";
}

}  // namespace

std::string StableName(const fs::path& device, const std::string& bus, const fs::path& links) {
    for (const char* kind : {"by-id", "by-path"}) {
        for (const fs::path& link : Entries(links / kind)) {
            if (LeadsTo(link, device)) return link;
        }
    }
    return bus.empty() ? device.string() : bus;
}

bool LeadsTo(const fs::path& path, const fs::path& device) {
    if (!path.is_absolute()) return false;
    std::error_code error;
    const fs::path target = fs::canonical(path, error);
    return !error && target == fs::weakly_canonical(device, error);
}

std::vector<std::string> UsersOf(const fs::path& device, const fs::path& processes) {
    std::vector<std::string> users;
    for (const fs::path& process : Entries(processes)) {
        if (!IsOtherProcess(process.filename()) || !HasOpen(process, device)) continue;
        const std::string name = NameOfProcess(process);
        if (std::ranges::find(users, name) == users.end()) users.push_back(name);
    }
    return users;
}

std::vector<std::string> ProblemsWithFiles(const fs::path& folder) {
    std::vector<std::string> problems;
    bool isAnyThere = false;
    for (const fs::path& file : Entries(folder)) {
        if (!file.filename().string().starts_with("video")) continue;
        isAnyThere = true;
        if (faccessat(AT_FDCWD, file.c_str(), R_OK | W_OK, AT_EACCESS) == 0) continue;
        problems.push_back("no permission for " + file.string() + HowToBeAllowed(file));
    }
    if (!isAnyThere) {
        problems.push_back("there is no " + (folder / "video*").string() +
                           ": the kernel knows no camera; plug one in, or load its driver");
    }
    return problems;
}

}  // namespace Osp::Media
