#include <gtest/gtest.h>
#include <memory>
#include <string>

#include <osp/text/ascii_encoding.h>
#include <osp/text/utf8_encoding.h>

#include "osp/base/values/buffer_copy.h"

namespace Osp::Text {
namespace {

using Base::ByteBuffer;
using Base::String;

std::string Taken(ByteBuffer* taken) {
    const std::unique_ptr<ByteBuffer> buffer(taken);
    const auto bytes = buffer->Remaining();
    return {bytes.begin(), bytes.end()};
}

std::unique_ptr<ByteBuffer> BufferOf(const std::string& text) {
    return Base::CopyToBuffer({reinterpret_cast<const Base::byte*>(text.data()), text.size()});
}

TEST(Encodings, WriteTheTextAndAZero) {
    const String text(std::u16string(u"a\u00e9\u20ac\U0001F4F7~"));
    EXPECT_EQ(Taken(AsciiEncoding().GetBytesN(text)), std::string("a????~\0", 7));
    EXPECT_EQ(Taken(Utf8Encoding().GetBytesN(text)),
              std::string("a\xc3\xa9\xe2\x82\xac\xf0\x9f\x93\xb7~\0", 12));
    EXPECT_EQ(Taken(Utf8Encoding().GetBytesN(String(std::u16string(1, u'\xd800')))),
              std::string("\xef\xbf\xbd\0", 4));
    EXPECT_EQ(Taken(AsciiEncoding().GetBytesN("")), std::string(1, '\0'));
}

TEST(Encodings, ReadToTheFirstZeroOrTheLimit) {
    const Utf8Encoding utf8;
    String text("before");
    EXPECT_EQ(utf8.GetString(ByteBuffer(), text), result::kInvalidArgument);
    EXPECT_EQ(text, "before");
    const auto buffer = BufferOf("x\xe2\x82\xacy\xffz!");
    ASSERT_EQ(buffer->SetPosition(1), result::kSuccess);
    ASSERT_EQ(buffer->SetLimit(7), result::kSuccess);
    ASSERT_EQ(utf8.GetString(*buffer, text), result::kSuccess);
    EXPECT_EQ(text, String(std::u16string(u"\u20acy\ufffdz")));
    EXPECT_EQ(buffer->GetPosition(), 1);
    ASSERT_EQ(utf8.GetString(*BufferOf(std::string("ab\0cd", 5)), text), result::kSuccess);
    EXPECT_EQ(text, "ab");
    ASSERT_EQ(utf8.GetString(*BufferOf(""), text), result::kSuccess);
    EXPECT_TRUE(text.IsEmpty());
}

}  // namespace
}  // namespace Osp::Text
