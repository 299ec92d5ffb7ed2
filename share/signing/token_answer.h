// What servers answer to requests for tokens.
#pragma once

#include <osp/base/string.h>

namespace Kivo {

// Answers are cut by the places of their names, not parsed, and the order of these is taken for
// granted. What cannot be cut leaves the text alone that it was for.

/// Token and secret of a request token: "oauth_token=T&oauth_token_secret=S", which may be followed
/// by "&oauth_callback_confirmed" and anything.
void CutRequestToken(const Osp::Base::String& answer, Osp::Base::String& token,
                     Osp::Base::String& secret);
/// Those of an access token, which "&user_id" and anything follow.
void CutAccessToken(const Osp::Base::String& answer, Osp::Base::String& token,
                    Osp::Base::String& secret);

}  // namespace Kivo
