#include <gtest/gtest.h>
#include <memory>
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

std::string MacInHex(const ByteBuffer& key, const std::string& data) {
    SecretKeyGenerator generator;
    EXPECT_EQ(generator.Construct(key), result::kSuccess);
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

// From RFC 2202, but for the last two.
TEST(Sha1Hmac, GivesThePublishedDigests) {
    const auto times = [](int count, int value) {
        return std::string(static_cast<std::size_t>(count), static_cast<char>(value));
    };
    const struct {
        std::string key, data;
        const char* mac;
    } cases[] = {
        {times(20, 0x0b), "Hi There", "b617318655057264e28bc0b6fb378c8ef146be00"},
        {"Jefe", "what do ya want for nothing?", "effcdf6ae5eb2fa2d27416d5f184df9c259a7c79"},
        {times(80, 0xaa), "Test Using Larger Than Block-Size Key - Hash Key First",
         "aa4ae5e15272d00e95705637ce8a3b55ed402112"},
        {"", "", "fbdb1d1b18aa6c08324b7d64b71fb76370690e1d"},
        {"key", "", "f42bb0eeb018ebbd4597ae7213711ec60760843f"},
    };
    for (const auto& c : cases) EXPECT_EQ(MacInHex(*BufferOf(c.key), c.data), c.mac) << c.data;
}

TEST(Sha1Hmac, SignsWhatRemainsOfKeyAndData) {
    const auto key = BufferOf("xJefex");
    ASSERT_EQ(key->SetLimit(5), result::kSuccess);
    ASSERT_EQ(key->SetPosition(1), result::kSuccess);
    EXPECT_EQ(MacInHex(*key, "what do ya want for nothing?"),
              "effcdf6ae5eb2fa2d27416d5f184df9c259a7c79");
    EXPECT_EQ(SecretKeyGenerator().GenerateN(), nullptr);
    EXPECT_EQ(Crypto::Sha1Hmac().GetMacN(*key), nullptr);
    EXPECT_EQ(SecretKeyGenerator().Construct(ByteBuffer()), result::kInvalidArgument);
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

}  // namespace
}  // namespace Osp::Security
