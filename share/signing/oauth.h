// Requests that say who sends them: OAuth 1.0 with HMAC-SHA1.
#pragma once

#include <memory>
#include <optional>

#include <osp/base/string.h>
#include <osp/security/i_secret_key.h>

namespace Kivo {

/// The application as the network knows it.
inline constexpr const char* kConsumerKey = "Qk7pLm2ZxR4tVb9NcW3yHd";
inline constexpr const char* kConsumerSecret = "Hd83kQpZ0vLm4TxWc9RbNy2UeGj7oSa5FqKi1XrDl";

/// What one signed request says of itself.
struct SignedCall {
    /// Of the request that turns a request token into an access token.
    struct Verified {
        Osp::Base::String token;
        Osp::Base::String pin;
    };

    Osp::Base::String nonce;
    long long timeStampSeconds = 0;
    std::optional<Verified> verified;  // none: asks for a request token
};

/// Parameters, which are the request's body as well. Token and PIN are not encoded, and nothing is
/// sorted later: they stand in the order in which they are signed.
Osp::Base::String ParametersOf(const SignedCall& call);
/// The value of the header field. `apiUrl` ends with a slash; `signature` goes in as it is.
Osp::Base::String AuthorizationOf(const SignedCall& call, const Osp::Base::String& apiUrl,
                                  const Osp::Base::String& signature);

/// What is signed.
Osp::Base::String SignatureBase(const Osp::Base::String& method, const Osp::Base::String& url,
                                const Osp::Base::String& parameters);
/// Null without the memory. An empty `tokenSecret` is that of nobody yet.
std::unique_ptr<Osp::Security::ISecretKey> SigningKey(const Osp::Base::String& tokenSecret);
/// Percent-encoded; empty when it cannot be made, which the server then refuses. `key` may be null.
Osp::Base::String Signature(const Osp::Base::String& base, const Osp::Security::ISecretKey* key);

/// 5 to 15 decimal digits that nobody can guess; empty when the device has none to give.
Osp::Base::String Nonce();
/// In seconds since 1970, and a day more.
long long TimeStampSeconds();

}  // namespace Kivo
