// The key that a generator makes, and wiping.
#pragma once

#include <cstring>
#include <span>
#include <vector>

#include <osp/security/i_secret_key.h>

namespace Osp::Security {

/// Also where nobody reads `bytes` any more.
inline void Wipe(std::span<Base::byte> bytes) {
    if (!bytes.empty()) explicit_bzero(bytes.data(), bytes.size());
}

class SecretKey : public ISecretKey {
  public:
    explicit SecretKey(std::span<const Base::byte> bytes) : bytes_(bytes.begin(), bytes.end()) {}
    ~SecretKey() override { Wipe(bytes_); }
    SecretKey(const SecretKey&) = delete;
    SecretKey& operator=(const SecretKey&) = delete;

    std::span<const Base::byte> GetEncoded() const override { return bytes_; }

  private:
    std::vector<Base::byte> bytes_;
};

}  // namespace Osp::Security
