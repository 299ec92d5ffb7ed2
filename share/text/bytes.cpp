#include "share/text/bytes.h"

#include <osp/text/ascii_encoding.h>
#include <osp/text/utf8_encoding.h>

namespace Kivo {

using Osp::Base::ByteBuffer;
using Osp::Base::String;

namespace {

std::unique_ptr<ByteBuffer> WithoutZero(std::unique_ptr<ByteBuffer> encoded) {
    const bool isWhole = encoded && Osp::Succeeded(encoded->SetLimit(encoded->GetRemaining() - 1));
    return isWhole ? std::move(encoded) : nullptr;
}

}  // namespace

std::unique_ptr<ByteBuffer> AsciiBytesOf(const String& text) {
    return WithoutZero(std::unique_ptr<ByteBuffer>(Osp::Text::AsciiEncoding().GetBytesN(text)));
}

std::unique_ptr<ByteBuffer> Utf8BytesOf(const String& text) {
    return WithoutZero(std::unique_ptr<ByteBuffer>(Osp::Text::Utf8Encoding().GetBytesN(text)));
}

String TextOfAnswer(ByteBuffer& answer) {
    String text;
    if (answer.GetRemaining() == 0) return text;
    answer.Remaining().back() = 0;
    (void)Osp::Text::Utf8Encoding().GetString(answer, text);
    return text;
}

}  // namespace Kivo
