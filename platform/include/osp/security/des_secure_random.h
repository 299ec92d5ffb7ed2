// Bytes that nobody can guess.
#pragma once

#include <osp/base/byte_buffer.h>

namespace Osp::Security {

/// Loop thread only.
class DesSecureRandom {
  public:
    /// `count` bytes of the operating system's: a new buffer, the caller's, all of which remains;
    /// in a run under a virtual clock always the same sequence. Null unless `count` is above 0, and
    /// when the system has none to give.
    static Base::ByteBuffer* GenerateRandomBytesN(int count);
};

}  // namespace Osp::Security
