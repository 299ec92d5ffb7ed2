// Text as UTF-8.
#pragma once

#include <osp/base/byte_buffer.h>
#include <osp/base/result.h>
#include <osp/base/string.h>

namespace Osp::Text {

/// Any thread.
class Utf8Encoding {
  public:
    /// The text, U+FFFD for half a surrogate pair, and a zero byte: a new buffer, the caller's, all
    /// of which remains. Null without the memory.
    Base::ByteBuffer* GetBytesN(const Base::String& text) const;

    /// Reads what remains of `bytes`, to the first zero byte, without moving its position; bytes
    /// that are not valid UTF-8 become U+FFFD. kInvalidArgument for an unconstructed buffer, which
    /// leaves `text` alone.
    result GetString(const Base::ByteBuffer& bytes, Base::String& text) const;
};

}  // namespace Osp::Text
