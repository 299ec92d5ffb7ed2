#include <gtest/gtest.h>

#include <osp/base/byte_buffer.h>
#include <osp/base/string.h>

namespace Osp::Base {
namespace {

TEST(ByteBufferTest, WhatHasBeenPutInCanBeTakenOut) {
    ByteBuffer buffer;
    ASSERT_TRUE(Succeeded(buffer.Construct(8)));
    EXPECT_EQ(buffer.GetRemaining(), 8);
    buffer.Remaining()[0] = 7;
    ASSERT_TRUE(Succeeded(buffer.SetPosition(3)));
    buffer.Flip();
    EXPECT_EQ(buffer.GetPosition(), 0);
    EXPECT_EQ(buffer.GetLimit(), 3);
    EXPECT_EQ(buffer.Remaining().size(), 3U);
    EXPECT_EQ(buffer.Remaining()[0], 7);
    EXPECT_EQ(buffer.SetPosition(4), result::kOutOfRange);
    EXPECT_EQ(buffer.SetLimit(9), result::kOutOfRange);
    ASSERT_TRUE(Succeeded(buffer.SetPosition(2)));
    ASSERT_TRUE(Succeeded(buffer.SetLimit(1)));
    EXPECT_EQ(buffer.GetRemaining(), 0);
    const ByteBuffer moved = std::move(buffer);
    EXPECT_EQ(moved.GetLimit(), 1);
    ByteBuffer copy;
    ASSERT_TRUE(Succeeded(copy.Construct(moved)));
    EXPECT_EQ(copy.GetLimit(), 1);
}

TEST(StringTest, FindsAndReplaces) {
    String text("aaab");
    EXPECT_EQ(text.IndexOf("aab"), 1);
    EXPECT_EQ(text.IndexOf("a", 2), 2);
    EXPECT_EQ(text.IndexOf("b", 4), -1);
    EXPECT_EQ(text.IndexOf("", 4), 4);
    EXPECT_EQ(text.IndexOf("", 5), -1);
    text.Replace("aa", "xyz");
    EXPECT_EQ(text, String("xyzab"));
    text.Replace("b", "");
    EXPECT_EQ(text, String("xyza"));
}

}  // namespace
}  // namespace Osp::Base
