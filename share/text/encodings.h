// Spellings for places where not every character may stand.
#pragma once

#include <osp/base/byte_buffer.h>
#include <osp/base/string.h>

namespace Kivo {

/// Letters, digits, "-", ".", "_" and "~" stay, every other byte becomes "%" and two upper-case
/// hexadecimal digits. The text ends with the first U+0000 in it; characters outside ASCII are
/// what AsciiBytesOf makes of them. Empty without the memory.
Osp::Base::String UrlEncode(const Osp::Base::String& text);

/// The first 20 bytes of the buffer, whatever its position and size, in Base64: 28 characters.
/// Empty for a smaller buffer.
Osp::Base::String Base64EncodeDigest(const Osp::Base::ByteBuffer& digest);

}  // namespace Kivo
