#include "share/signing/oauth.h"

#include <string>

#include <osp/base/byte_buffer.h>
#include <osp/security/crypto/sha1_hmac.h>
#include <osp/security/des_secure_random.h>
#include <osp/security/secret_key_generator.h>
#include <osp/system/system_time.h>

#include "share/text/bytes.h"
#include "share/text/encodings.h"

namespace Kivo {

using Osp::Base::ByteBuffer;
using Osp::Base::String;
using Osp::Security::ISecretKey;

namespace {

constexpr int kNonceBytes = 5;
constexpr long long kDaySeconds = 86400;

String DecimalOf(long long value) {
    return String(std::string_view(std::to_string(value)));
}

}  // namespace

String ParametersOf(const SignedCall& call) {
    String text("oauth_consumer_key=");
    text.Append(kConsumerKey).Append("&oauth_nonce=").Append(call.nonce);
    text.Append("&oauth_signature_method=HMAC-SHA1");
    if (call.verified) text.Append("&oauth_token=").Append(call.verified->token);
    text.Append("&oauth_timestamp=").Append(DecimalOf(call.timeStampSeconds));
    if (call.verified) text.Append("&oauth_verifier=").Append(call.verified->pin);
    return text.Append("&oauth_version=1.0");
}

String AuthorizationOf(const SignedCall& call, const String& apiUrl, const String& signature) {
    String text("OAuth realm=\"");
    text.Append(apiUrl).Append("\", oauth_nonce=\"").Append(call.nonce);
    text.Append("\", oauth_signature_method=\"HMAC-SHA1\", oauth_timestamp=\"");
    text.Append(DecimalOf(call.timeStampSeconds)).Append("\", oauth_consumer_key=\"");
    text.Append(kConsumerKey).Append("\", oauth_signature=\"").Append(signature);
    if (call.verified) {
        text.Append("\", oauth_token=\"").Append(call.verified->token);
        text.Append("\", oauth_verifier=\"").Append(call.verified->pin);
    }
    return text.Append("\", oauth_version=\"1.0\"");
}

String SignatureBase(const String& method, const String& url, const String& parameters) {
    String text(method);
    return text.Append("&").Append(UrlEncode(url)).Append("&").Append(UrlEncode(parameters));
}

std::unique_ptr<ISecretKey> SigningKey(const String& tokenSecret) {
    String text(kConsumerSecret);
    const auto bytes = AsciiBytesOf(text.Append("&").Append(tokenSecret));
    Osp::Security::SecretKeyGenerator generator;
    if (!bytes || Osp::Failed(generator.Construct(*bytes))) return nullptr;
    bytes->Clear();
    return std::unique_ptr<ISecretKey>(generator.GenerateN());
}

String Signature(const String& base, const ISecretKey* key) {
    const auto bytes = AsciiBytesOf(base);
    Osp::Security::Crypto::Sha1Hmac hmac;
    if (!bytes || key == nullptr || Osp::Failed(hmac.SetKey(*key))) return {};
    const std::unique_ptr<ByteBuffer> mac(hmac.GetMacN(*bytes));
    return mac ? UrlEncode(Base64EncodeDigest(*mac)) : String();
}

String Nonce() {
    using Osp::Security::DesSecureRandom;
    const std::unique_ptr<ByteBuffer> bytes(DesSecureRandom::GenerateRandomBytesN(kNonceBytes));
    String nonce;
    if (!bytes) return nonce;
    for (const Osp::Base::byte b : bytes->Bytes()) nonce.Append(int{b});
    return nonce;
}

// The day ahead is deliberate.
long long TimeStampSeconds() {
    long long ticksMs = 0;
    (void)Osp::System::SystemTime::GetTicks(ticksMs);
    return ticksMs / 1000 + kDaySeconds;
}

}  // namespace Kivo
