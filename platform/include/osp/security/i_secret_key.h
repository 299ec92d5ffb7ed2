// A key that signs.
#pragma once

#include <span>

#include <osp/base/byte_buffer.h>
#include <osp/base/object.h>

namespace Osp::Security {

/// Wipes its bytes when it ends.
class ISecretKey : public Base::Object {
  public:
    virtual std::span<const Base::byte> GetEncoded() const = 0;
};

}  // namespace Osp::Security
