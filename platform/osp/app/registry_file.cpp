// The file is read once and always written whole, by way of a temporary; so the only damage that it
// can have comes from outside, and what is damaged is set aside rather than mended: half of the
// settings would be worse than none, because nobody could tell which half. A newer version is left
// alone and never written over, even though every Save then fails: the program that it belongs to
// will want it back.
//
// Texts and numbers have a group each, so that a text of digits stays a text. A key is in one of
// them only.
#include "osp/app/registry_file.h"

#include <algorithm>
#include <cassert>
#include <glib.h>
#include <optional>
#include <utility>

#include "osp/base/owner.h"
#include "osp/io/regular_file.h"
#include "osp/io/safe_file.h"

namespace Osp::App {

namespace {

constexpr const char* kHeaderGroup = "Registry";
constexpr const char* kVersionKey = "Version";
constexpr const char* kCountKey = "Count";
constexpr const char* kTextGroup = "Texts";
constexpr const char* kNumberGroup = "Numbers";
constexpr int kVersion = 1;
constexpr mode_t kOwnerOnly = 0600;

using KeyFile = Base::Owner<GKeyFile, g_key_file_free>;
using GlibText = Base::Owner<char, g_free>;

/// A place for GLib's errors, of which only their presence matters.
class Error {
  public:
    Error() = default;
    ~Error() { g_clear_error(&error_); }
    Error(const Error&) = delete;
    Error& operator=(const Error&) = delete;

    GError** Out() { return &error_; }
    bool IsSet() const { return error_ != nullptr; }

  private:
    GError* error_ = nullptr;
};

std::optional<int> ReadNumber(GKeyFile* file, const char* group, const char* key) {
    Error error;
    const int number = g_key_file_get_integer(file, group, key, error.Out());
    return error.IsSet() ? std::nullopt : std::optional(number);
}

std::optional<std::string> ReadText(GKeyFile* file, const char* group, const char* key) {
    const GlibText text(g_key_file_get_string(file, group, key, nullptr));
    return text ? std::optional<std::string>(text.get()) : std::nullopt;
}

/// Adds the values of one group to `values`; false when one of them is not of the group's type.
template <class Reader>
bool ReadGroup(GKeyFile* file, const char* group, Reader reader,
               std::map<std::string, RegistryValue>& values) {
    const Base::Owner<char*, g_strfreev> keys(g_key_file_get_keys(file, group, nullptr, nullptr));
    for (char** key = keys.get(); key != nullptr && *key != nullptr; ++key) {
        auto value = reader(file, group, *key);
        if (!value) return false;
        values[*key] = std::move(*value);
    }
    return true;
}

}  // namespace

RegistryFile::RegistryFile(std::string path) : path_(std::move(path)) {
    std::string text;
    const result r = Io::ReadRegularFile(path_, text);
    if (r == result::kFileNotFound) return;
    state_ = Succeeded(r) ? Load(text) : State::kDamaged;
    if (state_ == State::kUsable) return;
    values_.clear();
    if (state_ == State::kDamaged) Io::SetAside(path_);
}

// A file that was cut off shows it: it has fewer values than its header says, or no end of line.
RegistryFile::State RegistryFile::Load(const std::string& text) {
    const KeyFile file(g_key_file_new());
    if (!text.ends_with('\n') || !g_key_file_load_from_data(file.get(), text.data(), text.size(),
                                                            G_KEY_FILE_NONE, nullptr)) {
        return State::kDamaged;
    }
    const auto version = ReadNumber(file.get(), kHeaderGroup, kVersionKey);
    if (version && *version > kVersion) return State::kNewer;
    const auto count = ReadNumber(file.get(), kHeaderGroup, kCountKey);
    const bool isWhole = version == kVersion && count &&
                         ReadGroup(file.get(), kTextGroup, ReadText, values_) &&
                         ReadGroup(file.get(), kNumberGroup, ReadNumber, values_) &&
                         static_cast<int>(values_.size()) >= *count;
    return isWhole ? State::kUsable : State::kDamaged;
}

void RegistryFile::Put(const std::string& key, RegistryValue value) {
    assert(IsValidKey(key));
    const auto found = values_.find(key);
    if (found != values_.end() && found->second == value) return;
    values_[key] = std::move(value);
    isChanged_ = true;
}

bool RegistryFile::Erase(const std::string& key) {
    if (values_.erase(key) == 0) return false;
    isChanged_ = true;
    return true;
}

result RegistryFile::Save() {
    if (state_ == State::kNewer) return result::kPermissionDenied;
    const KeyFile file(g_key_file_new());
    g_key_file_set_integer(file.get(), kHeaderGroup, kVersionKey, kVersion);
    g_key_file_set_integer(file.get(), kHeaderGroup, kCountKey, static_cast<int>(values_.size()));
    for (const auto& [key, value] : values_) {
        if (const auto* text = std::get_if<std::string>(&value)) {
            g_key_file_set_string(file.get(), kTextGroup, key.c_str(), text->c_str());
        } else {
            g_key_file_set_integer(file.get(), kNumberGroup, key.c_str(), std::get<int>(value));
        }
    }
    gsize length = 0;
    const GlibText text(g_key_file_to_data(file.get(), &length, nullptr));
    const result r = Io::WriteFileSafely(path_, std::string_view(text.get(), length),
                                         {.mode = kOwnerOnly, .modifiedMs = Io::NewFileDateMs()});
    if (Succeeded(r)) isChanged_ = false;
    return r;
}

bool RegistryFile::IsValidKey(const std::string& key) {
    return !key.empty() && std::ranges::all_of(key, [](char c) {
        return g_ascii_isalnum(c) || c == '_' || c == '-' || c == '.';
    });
}

}  // namespace Osp::App
