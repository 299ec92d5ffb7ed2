#include <memory>

#include <osp/security/des_secure_random.h>

#include "osp/base/randomness.h"

namespace Osp::Security {

Base::ByteBuffer* DesSecureRandom::GenerateRandomBytesN(int count) {
    if (count <= 0) return nullptr;
    auto buffer = std::make_unique<Base::ByteBuffer>();
    const bool isFilled =
        Succeeded(buffer->Construct(count)) && Base::Randomness::Current().Fill(buffer->Bytes());
    return isFilled ? buffer.release() : nullptr;
}

}  // namespace Osp::Security
