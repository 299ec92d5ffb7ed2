#include <variant>

#include <osp/app/app_registry.h>

#include "osp/app/registry_file.h"

namespace Osp::App {

namespace {

template <class T>
result Find(const RegistryFile& file, const Base::String& key, const T*& value) {
    const auto found = file.Values().find(key.ToUtf8());
    if (found == file.Values().end()) return result::kKeyNotFound;
    value = std::get_if<T>(&found->second);
    return value != nullptr ? result::kSuccess : result::kInvalidFormat;
}

/// Stores under a key that exists, or does not, as `shouldExist` says.
result Store(RegistryFile& file, const Base::String& key, RegistryValue value, bool shouldExist) {
    const std::string name = key.ToUtf8();
    if (!RegistryFile::IsValidKey(name)) return result::kInvalidArgument;
    const bool exists = file.Values().contains(name);
    if (exists && !shouldExist) return result::kKeyAlreadyExists;
    if (!exists && shouldExist) return result::kKeyNotFound;
    file.Put(name, std::move(value));
    return result::kSuccess;
}

result StoreText(RegistryFile& file, const Base::String& key, const Base::String& value,
                 bool shouldExist) {
    std::string text = value.ToUtf8();
    if (text.find('\0') != std::string::npos) return result::kInvalidArgument;
    return Store(file, key, std::move(text), shouldExist);
}

}  // namespace

result AppRegistry::Get(const Base::String& key, Base::String& value) const {
    const std::string* text = nullptr;
    const result r = Find(file_, key, text);
    if (Succeeded(r)) value = Base::String(*text);
    return r;
}

result AppRegistry::Get(const Base::String& key, int& value) const {
    const int* number = nullptr;
    const result r = Find(file_, key, number);
    if (Succeeded(r)) value = *number;
    return r;
}

result AppRegistry::Set(const Base::String& key, const Base::String& value) {
    return StoreText(file_, key, value, true);
}

result AppRegistry::Set(const Base::String& key, int value) {
    return Store(file_, key, value, true);
}

result AppRegistry::Add(const Base::String& key, const Base::String& value) {
    return StoreText(file_, key, value, false);
}

result AppRegistry::Add(const Base::String& key, int value) {
    return Store(file_, key, value, false);
}

result AppRegistry::Remove(const Base::String& key) {
    return file_.Erase(key.ToUtf8()) ? result::kSuccess : result::kKeyNotFound;
}

result AppRegistry::Save() {
    return file_.Save();
}

}  // namespace Osp::App
