// Signing in to Facebook: all of it happens on Facebook's own pages, the last of which has the
// token, or the reason why there is none, in its address.
#include "app/model/registry_keys.h"
#include "app/model/request_ids.h"
#include "share/showing_pages.h"
#include "share/signing/sign_in_page.h"
#include "share/sns_share_form.h"

namespace Kivo {

using Osp::Base::String;

namespace {

constexpr const char* kClientId = "9b1e4c7a2d8f3065e1a4b7c9d2f05e18";

/// Nothing in it is percent-encoded, deliberately.
String AuthorizationUrl() {
    String path("/oauth/authorize?client_id=");
    path.Append(kClientId).Append("&redirect_uri=");
    path.Append(UrlOf(kFacebookWeb, "/connect/login_success.html"));
    return UrlOf(kFacebookGraph,
                 path.Append("&type=user_agent&display=popup&scope=offline_access"));
}

}  // namespace

void SnsShareForm::SignInToFacebook() {
    facebookToken_ = {};
    currentRequest_ = kRequestFacebookPlaceholder;
    ShowPlaceholder(*web_);
}

void SnsShareForm::OnLoadingCompleted() {
    if (currentRequest_ == kRequestFacebookPlaceholder) {
        // From the settings as well: from here on both are one.
        currentRequest_ = kRequestFacebookSignInToShare;
        (void)web_->LoadUrl(AuthorizationUrl());
    } else if (currentRequest_ == kRequestFacebookSignInToShare) {
        ReadFacebookPage();
    }
}

void SnsShareForm::ReadFacebookPage() {
    const SignInAnswer answer = ReadFacebookToken(web_->GetUrl(), facebookToken_);
    if (answer == SignInAnswer::kNone) return;
    if (answer == SignInAnswer::kGiven) Keep(kFacebookTokenKey, facebookToken_);
    if (!isFromAlbum_) {
        (void)ReturnToSettingForm();
        return;
    }
    (void)ReturnToAlbumForm();
    if (answer == SignInAnswer::kGiven) TellMainForm(kRequestFacebookShare);
}

}  // namespace Kivo
