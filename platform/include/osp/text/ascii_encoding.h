// Text as ASCII.
#pragma once

#include <osp/base/byte_buffer.h>
#include <osp/base/string.h>

namespace Osp::Text {

/// Any thread.
class AsciiEncoding {
  public:
    /// A byte for each code unit of `text`, "?" for one outside ASCII, and a zero byte: a new
    /// buffer, the caller's, all of which remains. Null without the memory.
    Base::ByteBuffer* GetBytesN(const Base::String& text) const;
};

}  // namespace Osp::Text
