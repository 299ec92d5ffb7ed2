// Makes keys.
#pragma once

#include <vector>

#include <osp/base/byte_buffer.h>
#include <osp/base/object.h>
#include <osp/base/result.h>
#include <osp/security/i_secret_key.h>

namespace Osp::Security {

/// One thread at a time. Wipes its bytes when it ends.
class SecretKeyGenerator : public Base::Object {
  public:
    SecretKeyGenerator() = default;
    ~SecretKeyGenerator() override;
    SecretKeyGenerator(const SecretKeyGenerator&) = delete;
    SecretKeyGenerator& operator=(const SecretKeyGenerator&) = delete;

    /// For keys of what remains of `keyBytes`, which may be nothing. kInvalidArgument for an
    /// unconstructed buffer, kInvalidState when constructed already.
    result Construct(const Base::ByteBuffer& keyBytes);
    /// A new key, the caller's; null before construction.
    ISecretKey* GenerateN();

  private:
    std::vector<Base::byte> bytes_;
    bool isConstructed_ = false;
};

}  // namespace Osp::Security
