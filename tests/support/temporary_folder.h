// A folder that is there for one test.
#pragma once

#include <filesystem>
#include <fstream>
#include <glib.h>
#include <iterator>
#include <map>
#include <string>

namespace Osp::Testing {

class TemporaryFolder {
  public:
    TemporaryFolder() {
        char* made = g_dir_make_tmp("kivo-test-XXXXXX", nullptr);
        path_ = made;
        g_free(made);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& Path() const { return path_; }
    std::string operator/(const std::string& name) const { return path_ + "/" + name; }

  private:
    std::string path_;
};

inline std::string ReadText(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

inline void WriteText(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

/// The permissions of a file or folder, as chmod takes them.
inline unsigned ModeOf(const std::string& path) {
    return static_cast<unsigned>(std::filesystem::status(path).permissions());
}

/// Relative path and content of every file under `folder`, dot names included.
inline std::map<std::string, std::string> ReadTree(const std::string& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file()) continue;
        files[std::filesystem::relative(entry.path(), folder)] = ReadText(entry.path());
    }
    return files;
}

}  // namespace Osp::Testing
