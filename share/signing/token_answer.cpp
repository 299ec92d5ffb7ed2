#include "share/signing/token_answer.h"

namespace Kivo {

using Osp::Base::String;

namespace {

constexpr int kTokenNameLength = 12;   // of "oauth_token="
constexpr int kSecretNameLength = 19;  // of "oauth_token_secret="

struct Places {
    int token;
    int secret;

    bool AreThere() const { return token >= 0 && secret >= 0; }
};

Places Find(const String& answer) {
    return {answer.IndexOf("oauth_token="), answer.IndexOf("oauth_token_secret=")};
}

/// Up to the "&" before the secret's name. A secret that stands before the token leaves a length
/// below 0, and the token alone.
void CutToken(const String& answer, const Places& places, String& token) {
    const int length = places.secret - (kTokenNameLength + 1) - places.token;
    (void)answer.SubString(places.token + kTokenNameLength, length, token);
}

/// Up to the "&" before `next`.
void CutSecret(const String& answer, const Places& places, int next, String& secret) {
    const int start = places.secret + kSecretNameLength;
    (void)answer.SubString(start, next - 1 - start, secret);
}

}  // namespace

void CutRequestToken(const String& answer, String& token, String& secret) {
    const Places places = Find(answer);
    if (!places.AreThere()) return;
    CutToken(answer, places, token);
    const int confirmed = answer.IndexOf("oauth_callback_confirmed");
    CutSecret(answer, places, confirmed >= 0 ? confirmed : answer.GetLength() + 1, secret);
}

void CutAccessToken(const String& answer, String& token, String& secret) {
    const Places places = Find(answer);
    if (!places.AreThere()) return;
    CutToken(answer, places, token);
    // Without a user's id the length is below 0 and the old secret stays, deliberately.
    CutSecret(answer, places, answer.IndexOf("user_id"), secret);
}

}  // namespace Kivo
