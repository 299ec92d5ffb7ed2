// The file behind the application's settings.
#pragma once

#include <map>
#include <string>
#include <variant>

#include <osp/base/result.h>

namespace Osp::App {

using RegistryValue = std::variant<std::string, int>;  // text in UTF-8

/// Keys and values in memory, and the file that they are read from once and written to whole.
class RegistryFile {
  public:
    /// Reads the file at the real path `path`; a missing one holds nothing. One that is damaged is
    /// set aside, and one of a newer version is left alone; neither of them holds anything.
    explicit RegistryFile(std::string path);

    /// Whether there was a file that could not be used.
    bool WasDamaged() const { return state_ == State::kDamaged; }
    bool IsNewer() const { return state_ == State::kNewer; }

    const std::map<std::string, RegistryValue>& Values() const { return values_; }
    /// Adds or replaces; the key is a valid one (IsValidKey).
    void Put(const std::string& key, RegistryValue value);
    /// Returns whether the key was there.
    bool Erase(const std::string& key);

    /// Writes the file, readable for its owner only. A failure leaves it as it was; that of a newer
    /// version is kPermissionDenied.
    result Save();
    /// Save if anything was changed since the last one; for the end of a run.
    result SaveUnsaved() { return isChanged_ ? Save() : result::kSuccess; }

    static bool IsValidKey(const std::string& key);

  private:
    enum class State { kUsable, kDamaged, kNewer };

    State Load(const std::string& text);

    std::string path_;
    std::map<std::string, RegistryValue> values_;
    bool isChanged_ = false;
    State state_ = State::kUsable;
};

}  // namespace Osp::App
