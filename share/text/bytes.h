// Texts as the bytes that are sent, and bytes that came as texts.
#pragma once

#include <memory>

#include <osp/base/byte_buffer.h>
#include <osp/base/string.h>

namespace Kivo {

/// All of `text` remains in the buffer, without the zero byte that the encoders put behind it. Null
/// without the memory. A character outside ASCII becomes "?".
std::unique_ptr<Osp::Base::ByteBuffer> AsciiBytesOf(const Osp::Base::String& text);
/// The same in UTF-8.
std::unique_ptr<Osp::Base::ByteBuffer> Utf8BytesOf(const Osp::Base::String& text);

/// The answer of a server as text, but for its last byte, which is overwritten with the zero that
/// ends the text: it is deliberately lost. Empty for an empty answer.
Osp::Base::String TextOfAnswer(Osp::Base::ByteBuffer& answer);

}  // namespace Kivo
