#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <osp/base/utility/math.h>
#include <osp/security/crypto/sha1_hmac.h>
#include <osp/security/des_secure_random.h>
#include <osp/security/secret_key_generator.h>

#include "osp/base/clock.h"
#include "osp/base/randomness.h"
#include "osp/base/values/buffer_copy.h"
#include "osp/security/secret_key.h"
#include "tests/support/test_loop.h"

namespace Osp::Security {
namespace {

using Base::byte;
using Base::ByteBuffer;
using Bytes = std::vector<byte>;

std::unique_ptr<ByteBuffer> BufferOf(const std::string& text) {
    return Base::CopyToBuffer({reinterpret_cast<const byte*>(text.data()), text.size()});
}

Bytes BytesOf(const ByteBuffer& buffer) {
    return {buffer.Remaining().begin(), buffer.Remaining().end()};
}

std::string MacInHex(const std::string& key, const std::string& data) {
    SecretKeyGenerator generator;
    EXPECT_EQ(generator.Construct(*BufferOf(key)), result::kSuccess);
    const std::unique_ptr<ISecretKey> secret(generator.GenerateN());
    Crypto::Sha1Hmac hmac;
    EXPECT_EQ(hmac.SetKey(*secret), result::kSuccess);
    const std::unique_ptr<ByteBuffer> mac(hmac.GetMacN(*BufferOf(data)));
    std::string hex;
    for (const byte value : mac->Remaining()) {
        for (const int digit : {value / 16, value % 16}) hex += "0123456789abcdef"[digit];
    }
    return hex;
}

// RFC 2202, but for the last two.
TEST(Sha1Hmac, GivesThePublishedDigests) {
    const auto times = [](int count, int value) {
        return std::string(static_cast<std::size_t>(count), static_cast<char>(value));
    };
    std::string counting;
    for (char value = 1; value <= 25; ++value) counting += value;
    const struct {
        std::string key, data;
        const char* mac;
    } cases[] = {
        {times(20, 0x0b), "Hi There", "b617318655057264e28bc0b6fb378c8ef146be00"},
        {"Jefe", "what do ya want for nothing?", "effcdf6ae5eb2fa2d27416d5f184df9c259a7c79"},
        {times(20, 0xaa), times(50, 0xdd), "125d7342b9ac11cd91a39af48aa17b4f63f175d3"},
        {counting, times(50, 0xcd), "4c9007f4026250c6bc8414f9bf50c86c2d7235da"},
        {times(20, 0x0c), "Test With Truncation", "4c1a03424b55e07fe7f27be1d58bb9324a9a5a04"},
        {times(80, 0xaa), "Test Using Larger Than Block-Size Key - Hash Key First",
         "aa4ae5e15272d00e95705637ce8a3b55ed402112"},
        {times(80, 0xaa),
         "Test Using Larger Than Block-Size Key and Larger Than One Block-Size Data",
         "e8e99d0f45237d786d6bbaa7965c7808bbff1a91"},
        {"", "", "fbdb1d1b18aa6c08324b7d64b71fb76370690e1d"},
        {"key", "", "f42bb0eeb018ebbd4597ae7213711ec60760843f"},
    };
    for (const auto& c : cases) EXPECT_EQ(MacInHex(c.key, c.data), c.mac) << c.data;
}

TEST(Sha1Hmac, SignsWhatRemainsOfKeyAndData) {
    const auto key = BufferOf("xJefex");
    const auto data = BufferOf("what do ya want for nothing?\0more");
    ASSERT_EQ(key->SetLimit(5), result::kSuccess);
    ASSERT_EQ(key->SetPosition(1), result::kSuccess);
    SecretKeyGenerator generator;
    Crypto::Sha1Hmac hmac;
    EXPECT_EQ(generator.GenerateN(), nullptr);
    EXPECT_EQ(hmac.GetMacN(*data), nullptr);
    EXPECT_EQ(generator.Construct(ByteBuffer()), result::kInvalidArgument);
    ASSERT_EQ(generator.Construct(*key), result::kSuccess);
    EXPECT_EQ(generator.Construct(*key), result::kInvalidState);
    const std::unique_ptr<ISecretKey> secret(generator.GenerateN());
    ASSERT_EQ(hmac.SetKey(*secret), result::kSuccess);
    const std::unique_ptr<ByteBuffer> mac(hmac.GetMacN(*data));
    EXPECT_EQ(mac->GetRemaining(), 20);
    EXPECT_EQ(mac->Remaining()[0], 0xef);
}

TEST(Keys, AreWipedByteByByte) {
    Bytes bytes{1, 2, 3};
    Wipe(bytes);
    EXPECT_EQ(bytes, Bytes(3));
}

TEST(Chance, IsTheSameUnderEveryVirtualClockAndNeverUnderTheRealOne) {
    const auto draw = [](const Base::Clock& clock) {
        Base::Randomness randomness(clock);
        const Base::Randomness::Installed installed(randomness);
        const std::unique_ptr<ByteBuffer> bytes(DesSecureRandom::GenerateRandomBytesN(16));
        return std::pair(Base::Utility::Math::Rand(), BytesOf(*bytes));
    };
    const Base::VirtualClock still;
    const Base::RealClock real;
    EXPECT_EQ(draw(still), draw(still));
    EXPECT_NE(draw(real).first, draw(real).first);
    EXPECT_NE(draw(real).second, draw(real).second);
    // What the standard says that this engine begins with, so that pictures stay the same.
    EXPECT_EQ(draw(still).first, static_cast<int>(3499211612U / 2));
}

TEST(Chance, GivesBytesInTheirNumberAndNumbersInTheirRange) {
    const Testing::TestLoop loop;
    EXPECT_EQ(DesSecureRandom::GenerateRandomBytesN(0), nullptr);
    EXPECT_EQ(DesSecureRandom::GenerateRandomBytesN(-1), nullptr);
    const std::unique_ptr<ByteBuffer> five(DesSecureRandom::GenerateRandomBytesN(5));
    EXPECT_EQ(five->GetRemaining(), 5);
    std::set<int> faces;
    for (int i = 0; i < 1000; ++i) {
        const int number = Base::Utility::Math::Rand();
        EXPECT_GE(number, 0);
        faces.insert(number % 6);
    }
    EXPECT_EQ(faces.size(), 6U);
}

}  // namespace
}  // namespace Osp::Security
