// What signs requests, as members: each is a function of its own, which is what tests use.
#include "share/signing/oauth.h"
#include "share/sns_share_form.h"
#include "share/text/bytes.h"
#include "share/text/encodings.h"

namespace Kivo {

using Osp::Base::ByteBuffer;
using Osp::Base::String;
using Osp::Security::ISecretKey;

ByteBuffer* SnsShareForm::ConvertStringToByteBuffer(const String& text) {
    return AsciiBytesOf(text).release();
}

String SnsShareForm::String_urlEncode(const String& text) {
    return UrlEncode(text);
}

String SnsShareForm::String_base64Encode(const ByteBuffer* digest) {
    return digest == nullptr ? String() : Base64EncodeDigest(*digest);
}

String SnsShareForm::MakeSignatureBaseString(const String& method, const String& url,
                                             const String& params) {
    return SignatureBase(method, url, params);
}

ISecretKey* SnsShareForm::GenerateKey() {
    return SigningKey(twitterSecret_).release();
}

String SnsShareForm::GenerateSignature(String& baseString, ISecretKey* key) {
    const std::unique_ptr<ISecretKey> owned(key);
    return Signature(baseString, owned.get());
}

String SnsShareForm::GetNonce() {
    return Nonce();
}

long long SnsShareForm::GetTimeStamp() {
    return TimeStampSeconds();
}

}  // namespace Kivo
