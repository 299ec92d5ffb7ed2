#include "share/text/encodings.h"

#include <array>
#include <string>
#include <string_view>

#include "share/text/bytes.h"

namespace Kivo {

using Osp::Base::byte;
using Osp::Base::String;

namespace {

constexpr std::string_view kBase64 =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::string_view kHexadecimal = "0123456789ABCDEF";
constexpr std::size_t kDigestSize = 20;

constexpr bool IsUnreserved(byte b) {
    const bool isLetter = (b >= 'a' && b <= 'z') || (b >= 'A' && b <= 'Z');
    const bool isDigit = b >= '0' && b <= '9';
    return isLetter || isDigit || b == '-' || b == '.' || b == '_' || b == '~';
}

}  // namespace

String UrlEncode(const String& text) {
    const auto bytes = AsciiBytesOf(text);
    if (!bytes) return {};
    std::string encoded;
    // As many bytes as the text has characters, deliberately, however many the buffer has.
    for (int i = 0; i < text.GetLength(); ++i) {
        byte b = 0;
        if (Osp::Failed(bytes->GetByte(i, b)) || b == 0) break;
        if (IsUnreserved(b)) {
            encoded += static_cast<char>(b);
        } else {
            encoded.append({'%', kHexadecimal[b >> 4], kHexadecimal[b & 15]});
        }
    }
    return String(std::string_view(encoded));
}

String Base64EncodeDigest(const Osp::Base::ByteBuffer& digest) {
    const auto bytes = digest.Bytes();
    if (bytes.size() < kDigestSize) return {};
    std::array<char, 29> text{};
    auto out = text.begin();
    for (std::size_t i = 0; i < kDigestSize; i += 3) {
        const bool isWhole = i + 2 < kDigestSize;  // the last group has two bytes only
        const unsigned group =
            (bytes[i] << 16U) | (bytes[i + 1] << 8U) | (isWhole ? bytes[i + 2] : 0U);
        *out++ = kBase64[group >> 18];
        *out++ = kBase64[(group >> 12) & 63];
        *out++ = kBase64[(group >> 6) & 63];
        *out++ = isWhole ? kBase64[group & 63] : '=';
    }
    return {text.data()};
}

}  // namespace Kivo
