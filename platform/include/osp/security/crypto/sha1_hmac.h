// Message authentication with SHA-1.
#pragma once

#include <osp/base/byte_buffer.h>
#include <osp/base/object.h>
#include <osp/base/result.h>
#include <osp/security/i_secret_key.h>

namespace Osp::Security::Crypto {

/// One thread at a time.
class Sha1Hmac : public Base::Object {
  public:
    /// Not owned; outlives its use here.
    result SetKey(const ISecretKey& key);
    /// The 20 bytes for what remains of `data`: a new buffer, the caller's, all of which remains.
    /// Null without a key.
    Base::ByteBuffer* GetMacN(const Base::ByteBuffer& data) const;

  private:
    const ISecretKey* key_ = nullptr;  // not owned
};

}  // namespace Osp::Security::Crypto
