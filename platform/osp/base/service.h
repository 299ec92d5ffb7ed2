// The one instance of a platform service that the host has put in place.
#pragma once

#include <cassert>

namespace Osp {

/// T's single instance for the process. The host owns the object and installs it for as long as it
/// lives; everything else reaches it through Current(). Loop thread only. Code that uses it must
/// not be built with hidden symbols, or it has an instance of its own.
template <class T>
class Service {
  public:
    /// Installs `instance` for the lifetime of this object and puts back what was there before.
    class Installed {
      public:
        explicit Installed(T& instance) : previous_(current_) { current_ = &instance; }
        ~Installed() { current_ = previous_; }
        Installed(const Installed&) = delete;
        Installed& operator=(const Installed&) = delete;

      private:
        T* previous_;
    };

    static bool IsInstalled() { return current_ != nullptr; }
    static T& Current() {
        assert(current_ != nullptr);
        return *current_;
    }

  private:
    static inline T* current_ = nullptr;
};

}  // namespace Osp
