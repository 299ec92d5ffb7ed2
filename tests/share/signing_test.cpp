// What is sent to sign in, and what is read of the answers. The signatures were computed by another
// program.
#include <algorithm>
#include <gtest/gtest.h>
#include <numeric>

#include "share/signing/oauth.h"
#include "share/signing/sign_in_page.h"
#include "share/signing/token_answer.h"
#include "share/text/bytes.h"
#include "share/text/encodings.h"
#include "tests/support/test_loop.h"

namespace Kivo {
namespace {

using Osp::Base::ByteBuffer;
using Osp::Base::String;

TEST(Encodings, UrlsKeepOnlyWhatIsUnreserved) {
    const struct {
        String text;
        const char* encoded;
    } cases[] = {{"", ""},
                 {"a b~c", "a%20b~c"},
                 {"-._~AZaz09", "-._~AZaz09"},
                 {"+/=&:@[`{^%", "%2B%2F%3D%26%3A%40%5B%60%7B%5E%25"},
                 {"\x1F\x7F", "%1F%7F"},
                 {"\u00e9", "%3F"},
                 {String(std::u16string(u"a\0b", 3)), "a"}};
    for (const auto& c : cases) EXPECT_EQ(UrlEncode(c.text).ToUtf8(), c.encoded);
}

TEST(Encodings, DigestsAreTwentyBytesOfBase64) {
    ByteBuffer digest;
    ASSERT_EQ(digest.Construct(23), result::kSuccess);
    digest.Clear();
    EXPECT_EQ(Base64EncodeDigest(digest).ToUtf8(), std::string(27, 'A') + "=");
    std::iota(digest.GetPointer(), digest.GetPointer() + 23, Osp::Base::byte{236});
    EXPECT_EQ(Base64EncodeDigest(digest).ToUtf8(), "7O3u7/Dx8vP09fb3+Pn6+/z9/v8=");
    ByteBuffer small;
    ASSERT_EQ(small.Construct(19), result::kSuccess);
    EXPECT_TRUE(Base64EncodeDigest(small).IsEmpty());
}

TEST(Encodings, BytesComeWithoutTheZeroAndAnswersLoseTheirLast) {
    const auto bytes = AsciiBytesOf("a\u00e9");
    EXPECT_TRUE(std::ranges::equal(bytes->Remaining(), std::string("a?")));
    const auto answer = Utf8BytesOf("\u00e9ab");
    EXPECT_EQ(answer->GetRemaining(), 4);
    EXPECT_EQ(TextOfAnswer(*answer).ToUtf8(), "\u00e9a");
    EXPECT_TRUE(TextOfAnswer(*Utf8BytesOf("")).IsEmpty());
}

constexpr const char* kParameters =
    "oauth_consumer_key=Qk7pLm2ZxR4tVb9NcW3yHd&oauth_nonce=7200113&oauth_signature_method=HMAC-SHA1"
    "&oauth_timestamp=1700086400&oauth_version=1.0";
constexpr const char* kVerifiedParameters =
    "oauth_consumer_key=Qk7pLm2ZxR4tVb9NcW3yHd&oauth_nonce=7200113&oauth_signature_method=HMAC-SHA1"
    "&oauth_token=req+tok&oauth_timestamp=1700086400&oauth_verifier=1234567&oauth_version=1.0";
constexpr const char* kAuthorization =
    "OAuth realm=\"https://api.example/\", oauth_nonce=\"7200113\", oauth_signature_method=\""
    "HMAC-SHA1\", oauth_timestamp=\"1700086400\", oauth_consumer_key=\"Qk7pLm2ZxR4tVb9NcW3yHd\", "
    "oauth_signature=\"s%3D\", oauth_version=\"1.0\"";
constexpr const char* kVerifiedAuthorization =
    "OAuth realm=\"https://api.example/\", oauth_nonce=\"7200113\", oauth_signature_method=\""
    "HMAC-SHA1\", oauth_timestamp=\"1700086400\", oauth_consumer_key=\"Qk7pLm2ZxR4tVb9NcW3yHd\", "
    "oauth_signature=\"s%3D\", oauth_token=\"req+tok\", oauth_verifier=\"1234567\", "
    "oauth_version=\"1.0\"";

TEST(OAuth, RequestsSayWhoSendsThem) {
    SignedCall call{"7200113", 1700086400, {}};
    const String url("https://api.example/");
    EXPECT_EQ(ParametersOf(call).ToUtf8(), kParameters);
    EXPECT_EQ(AuthorizationOf(call, url, "s%3D").ToUtf8(), kAuthorization);
    call.verified = {"req+tok", "1234567"};
    EXPECT_EQ(ParametersOf(call).ToUtf8(), kVerifiedParameters);
    EXPECT_EQ(AuthorizationOf(call, url, "s%3D").ToUtf8(), kVerifiedAuthorization);
}

TEST(OAuth, SignaturesAreThoseOfOtherPrograms) {
    const String base =
        SignatureBase("POST", "https://api.example/oauth/request_token", kParameters);
    EXPECT_EQ(base.ToUtf8(),
              "POST&https%3A%2F%2Fapi.example%2Foauth%2Frequest_token&oauth_consumer_key%3D"
              "Qk7pLm2ZxR4tVb9NcW3yHd%26oauth_nonce%3D7200113%26oauth_signature_method%3DHMAC-SHA1"
              "%26oauth_timestamp%3D1700086400%26oauth_version%3D1.0");
    EXPECT_EQ(Signature(base, SigningKey("").get()).ToUtf8(),
              "E%2BP2aO1j2aMle%2BLCtLwL9%2BW6IuU%3D");
    const String verifiedBase =
        SignatureBase("POST", "https://api.example/oauth/access_token", kVerifiedParameters);
    EXPECT_EQ(Signature(verifiedBase, SigningKey("sec/ret").get()).ToUtf8(),
              "mzhLLJVM%2BU%2BTWxQVz8lUYAG1oF4%3D");
    EXPECT_TRUE(Signature(base, nullptr).IsEmpty());
}

TEST(OAuth, NoncesAreNumbersAndTimeIsADayAhead) {
    Osp::Testing::TestLoop loop;
    const std::string nonce = Nonce().ToUtf8();
    EXPECT_TRUE(nonce.size() >= 5 && nonce.size() <= 15) << nonce;
    EXPECT_EQ(nonce.find_first_not_of("0123456789"), std::string::npos) << nonce;
    EXPECT_NE(Nonce().ToUtf8(), nonce);
    const long long start = TimeStampSeconds();
    loop.Pass(std::chrono::milliseconds(2999));
    EXPECT_EQ(TimeStampSeconds(), start + 2);
    EXPECT_EQ(start + 2, loop.Clock().EpochMs() / 1000 + 24 * 60 * 60);
}

using Cut = void (*)(const String&, String&, String&);

std::string CutWith(Cut cut, const char* answer) {
    String token("old");
    String secret("older");
    cut(answer, token, secret);
    return token.Append(" ").Append(secret).ToUtf8();
}

TEST(TokenAnswers, AreCutByTheirNames) {
    const struct {
        Cut cut;
        const char* answer;
        const char* taken;
    } cases[] = {
        {CutRequestToken, "oauth_token=T1&oauth_token_secret=S1&oauth_callback_confirmed=tru",
         "T1 S1"},
        {CutRequestToken, "oauth_token=T1&oauth_token_secret=S1&x=", "T1 S1&x="},
        {CutRequestToken, "x&oauth_token=&oauth_token_secret=", " "},
        {CutRequestToken, "oauth_token_secret=S1&oauth_token=T1", "old S1&oauth_token=T1"},
        {CutRequestToken, "oauth_callback_confirmed&oauth_token=T&oauth_token_secret=S", "T older"},
        {CutRequestToken, "oauth_token=T1", "old older"},
        {CutRequestToken, "", "old older"},
        {CutAccessToken, "oauth_token=T2&oauth_token_secret=S2&user_id=7&screen_name=a", "T2 S2"},
        {CutAccessToken, "oauth_token=T2&oauth_token_secret=S2", "T2 older"},
        {CutAccessToken, "user_id=7&oauth_token=T2&oauth_token_secret=S2", "T2 older"},
        {CutAccessToken, "oauth_token_secret=S2", "old older"}};
    for (const auto& c : cases) EXPECT_EQ(CutWith(c.cut, c.answer), c.taken) << c.answer;
}

TEST(SignInPages, APinStandsBehindItsMarkInOneChunk) {
    const struct {
        const char* chunk;
        SignInAnswer answer;
    } cases[] = {{"<p><div id=\"oauth_pin\">1234567</div>", SignInAnswer::kGiven},
                 {" <div id=\"oauth_pin\">1234567", SignInAnswer::kGiven},
                 {" <div id=\"oauth_pin\">123456", SignInAnswer::kNone},
                 {"<div id=\"oauth_pin\">1234567", SignInAnswer::kNone},
                 {" <div id=\"oauth_pi", SignInAnswer::kNone},
                 {"\nConnection Denied <div id=\"oauth_pin\">1234567", SignInAnswer::kDenied},
                 {"Connection Denied", SignInAnswer::kNone},
                 {"", SignInAnswer::kNone}};
    for (const auto& c : cases) {
        String pin;
        EXPECT_EQ(ReadPin(c.chunk, pin), c.answer) << c.chunk;
        EXPECT_EQ(pin.ToUtf8(), c.answer == SignInAnswer::kGiven ? "1234567" : "") << c.chunk;
    }
}

TEST(SignInPages, AFacebookTokenIsLongerThanThePlaceWhereItStarts) {
    const std::string base = "http://w/#";  // 10 characters: a token starts at 23
    const auto addressOf = [&](const std::string& token) {
        return base + "access_token=" + token + "&expires_in=0";
    };
    const std::string longToken(24, 't');
    const struct {
        std::string url;
        SignInAnswer answer;
        std::string token;
    } cases[] = {
        {addressOf(longToken), SignInAnswer::kGiven, longToken},
        {addressOf(std::string(23, 't')), SignInAnswer::kNone, ""},
        {addressOf("ACCESS_DENIED" + longToken), SignInAnswer::kGiven, "ACCESS_DENIED" + longToken},
        {addressOf(longToken) + "&error_reason=x", SignInAnswer::kDenied, ""},
        {addressOf(longToken) + "&login.php", SignInAnswer::kNone, ""},
        {"access_token=" + longToken + "&expires_in=0", SignInAnswer::kNone, ""},
        {base + "access_token=" + longToken, SignInAnswer::kNone, ""},
        {base + "expires_in=0&access_token=" + longToken, SignInAnswer::kNone, ""},
        {"", SignInAnswer::kNone, ""}};
    for (const auto& c : cases) {
        String token;
        EXPECT_EQ(ReadFacebookToken(String(std::string_view(c.url)), token), c.answer) << c.url;
        EXPECT_EQ(token.ToUtf8(), c.token) << c.url;
    }
}

TEST(SignInPages, OnlyTheHostItselfIsTheHost) {
    for (const char* url :
         {"https://api.example/x", "https://API.example", "https://api.example:443/",
          "https://api.example?x", "https://api.example#x"}) {
        EXPECT_TRUE(IsSecurePageOf(url, "api.example")) << url;
        EXPECT_TRUE(IsSecurePageOf(url, "Api.example:443")) << url;
        EXPECT_FALSE(IsSecurePageOf(url, "api.example:8443")) << url;
        EXPECT_FALSE(IsSecurePageOf(url, "")) << url;
    }
    for (const char* url :
         {"http://api.example/", "https://api.example.evil/", "https:///api.example",
          "https://api.example@evil/", "https://evil/api.example", "", "https://",
          "https://api.example:8443/"}) {
        EXPECT_FALSE(IsSecurePageOf(url, "api.example")) << url;
    }
}

}  // namespace
}  // namespace Kivo
