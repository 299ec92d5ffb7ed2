#include <osp/security/secret_key_generator.h>

#include "osp/security/secret_key.h"

namespace Osp::Security {

SecretKeyGenerator::~SecretKeyGenerator() {
    Wipe(bytes_);
}

result SecretKeyGenerator::Construct(const Base::ByteBuffer& keyBytes) {
    if (isConstructed_) return result::kInvalidState;
    if (keyBytes.GetPointer() == nullptr) return result::kInvalidArgument;
    const auto remaining = keyBytes.Remaining();
    bytes_.assign(remaining.begin(), remaining.end());
    isConstructed_ = true;
    return result::kSuccess;
}

ISecretKey* SecretKeyGenerator::GenerateN() {
    return isConstructed_ ? new SecretKey(bytes_) : nullptr;
}

}  // namespace Osp::Security
