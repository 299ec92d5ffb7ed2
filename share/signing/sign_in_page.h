// What is read off the pages that people sign in on.
#pragma once

#include <osp/base/string.h>

namespace Kivo {

enum class SignInAnswer {
    kNone,    ///< a page for the user to go on with
    kDenied,  ///< the user has said no
    kGiven,   ///< there is a PIN, or a token
};

/// A chunk of Twitter's page. kGiven puts the PIN into `pin`, and whatever is not whole in this
/// chunk is kNone. A mark at the very beginning deliberately counts as none.
SignInAnswer ReadPin(const Osp::Base::String& chunk, Osp::Base::String& pin);

/// The address of a page of Facebook's. `token` is empty before; kGiven puts the token into it. One
/// that reads exactly like the mark of a denial is one.
SignInAnswer ReadFacebookToken(const Osp::Base::String& url, Osp::Base::String& token);

/// Whether `url` is that of a page over https on exactly `host`, a name with or without a port.
bool IsSecurePageOf(const Osp::Base::String& url, const Osp::Base::String& host);

}  // namespace Kivo
