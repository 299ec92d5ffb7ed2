// The application's settings, kept between runs.
#pragma once

#include <osp/base/object.h>
#include <osp/base/result.h>
#include <osp/base/string.h>

namespace Osp::App {

class Access;
class RegistryFile;

/// Made by the platform. Keys with a text or a number each. A key is made of letters, digits, '_',
/// '-' and '.'; with any other, and with text that holds U+0000, Set and Add give kInvalidArgument.
/// Changes are in effect at once and on disk after Save; the platform saves what is left when the
/// application ends. Loop thread only.
class AppRegistry : public Base::Object {
  public:
    AppRegistry(const AppRegistry&) = delete;
    AppRegistry& operator=(const AppRegistry&) = delete;

    /// kKeyNotFound, and kInvalidFormat when the key holds the other type, leave `value` alone.
    result Get(const Base::String& key, Base::String& value) const;
    result Get(const Base::String& key, int& value) const;

    /// Replaces the value, and its type, of a key that exists; kKeyNotFound.
    result Set(const Base::String& key, const Base::String& value);
    result Set(const Base::String& key, int value);

    /// kKeyAlreadyExists changes nothing.
    result Add(const Base::String& key, const Base::String& value);
    result Add(const Base::String& key, int value);

    /// kKeyNotFound.
    result Remove(const Base::String& key);

    /// Writes everything to disk. On a failure (kStorageFull, kPermissionDenied, kFileNotFound when
    /// the folder has vanished, kIo) the file is what it was and the changes remain to be saved.
    result Save();

  private:
    friend class Access;

    explicit AppRegistry(RegistryFile& file) : file_(file) {}

    RegistryFile& file_;  // the host's
};

}  // namespace Osp::App
