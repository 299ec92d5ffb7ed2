#include <array>
#include <glib.h>
#include <span>

#include <osp/security/crypto/sha1_hmac.h>

#include "osp/base/owner.h"
#include "osp/base/values/buffer_copy.h"

namespace Osp::Security::Crypto {

using Base::byte;

namespace {

constexpr std::size_t kDigestSize = 20;

std::array<byte, kDigestSize> Authenticate(std::span<const byte> key, std::span<const byte> data) {
    const Base::Owner<GHmac, g_hmac_unref> hmac(
        g_hmac_new(G_CHECKSUM_SHA1, key.data(), key.size()));
    g_hmac_update(hmac.get(), data.data(), static_cast<gssize>(data.size()));
    std::array<byte, kDigestSize> digest{};
    gsize size = digest.size();
    g_hmac_get_digest(hmac.get(), digest.data(), &size);
    return digest;
}

}  // namespace

result Sha1Hmac::SetKey(const ISecretKey& key) {
    key_ = &key;
    return result::kSuccess;
}

Base::ByteBuffer* Sha1Hmac::GetMacN(const Base::ByteBuffer& data) const {
    if (key_ == nullptr) return nullptr;
    return Base::CopyToBuffer(Authenticate(key_->GetEncoded(), data.Remaining())).release();
}

}  // namespace Osp::Security::Crypto
