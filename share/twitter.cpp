// Signing in to Twitter.
//
//   111, 112   POST /oauth/request_token, signed with nobody's secret: a request token
//   113        the page /oauth/authorize, where the user says yes; the page with the PIN is read
//              and not shown
//   114        POST /oauth/access_token, signed with the request token's secret: an access token
//
// From the album the message is written between 113 and 114, and the upload follows.
#include <osp/text/utf8_encoding.h>

#include "app/model/registry_keys.h"
#include "app/model/request_ids.h"
#include "share/showing_pages.h"
#include "share/signing/oauth.h"
#include "share/signing/sign_in_page.h"
#include "share/signing/token_answer.h"
#include "share/sns_share_form.h"
#include "share/text/bytes.h"

namespace Kivo {

using Osp::Base::ByteBuffer;
using Osp::Base::String;

void SnsShareForm::SignInToTwitter() {
    ShowPlaceholder(*web_);
    ForgetTwitter();
    twitterPin_ = {};
    PostSigned("/oauth/request_token", false);
}

void SnsShareForm::PostSigned(const char* path, bool hasPin) {
    SignedCall call{GetNonce(), GetTimeStamp(), {}};
    if (hasPin) call.verified = {twitterToken_, twitterPin_};
    const String parameters = ParametersOf(call);
    String base = MakeSignatureBaseString("POST", UrlOf(kTwitterApi, path), parameters);
    const String signature = GenerateSignature(base, GenerateKey());
    result r = OpenPost(kTwitterApi, path);
    if (Osp::Succeeded(r)) {
        r = Submit(parameters, AuthorizationOf(call, UrlOf(kTwitterApi, "/"), signature));
    }
    if (Osp::Failed(r)) EndCall();
}

// The small "t" of "Content-type" is deliberate.
result SnsShareForm::Submit(const String& parameters, const String& authorization) {
    auto& request = transaction_->GetRequest();
    const auto body = AsciiBytesOf(parameters);
    if (!body) return result::kOutOfMemory;
    result r = request.GetHeader().AddField("Content-type", "application/x-www-form-urlencoded");
    if (Osp::Succeeded(r)) r = request.GetHeader().AddField("Authorization", authorization);
    if (Osp::Succeeded(r)) r = request.WriteBody(*body);
    return Osp::Failed(r) ? r : transaction_->Submit();
}

void SnsShareForm::TakeTokens(const HttpTransaction& transaction) {
    const bool isRequestToken =
        currentRequest_ == kRequestTwitterSignInToShare || currentRequest_ == kRequestTwitterSignIn;
    if (!isRequestToken && currentRequest_ != kRequestTwitterPin) return;
    const std::unique_ptr<ByteBuffer> body(transaction.GetResponse().ReadBodyN());
    if (!body) return;
    const String answer = TextOfAnswer(*body);
    body->Clear();
    const auto cut = isRequestToken ? CutRequestToken : CutAccessToken;
    cut(answer, twitterToken_, twitterSecret_);
}

// An answer without tokens goes to the album in any case, also for the settings, deliberately. When
// there is no album, this form stays, and "Close" leads to the settings.
void SnsShareForm::AskTheUser() {
    if (frame_->GetCurrentForm() != this) return;
    if (twitterToken_.IsEmpty() || twitterSecret_.IsEmpty()) {
        (void)ReturnToAlbumForm();
    } else {
        (void)SendUserEvent(kRequestTwitterPage, nullptr);
    }
}

void SnsShareForm::OpenTwitterPage() {
    if (twitterToken_.IsEmpty()) return;  // closed meanwhile
    String path("/oauth/authorize?oauth_token=");
    (void)web_->LoadUrl(UrlOf(kTwitterApi, path.Append(twitterToken_)));
}

Osp::Web::Controls::DecisionPolicy SnsShareForm::OnLoadingDecision(const String& url) {
    using Osp::Web::Controls::DecisionPolicy;
    const bool isAwaited =
        currentRequest_ == kRequestTwitterPage && IsSecurePageOf(url, HostOf(kTwitterApi));
    return isAwaited ? DecisionPolicy::kDownload : DecisionPolicy::kRender;
}

// Every chunk is looked at by itself: a mark that is cut in two is none, and both halves are shown.
void SnsShareForm::OnWebChunkedDataReceived(const ByteBuffer& chunk) {
    if (currentRequest_ != kRequestTwitterPage) return;
    String text;
    (void)Osp::Text::Utf8Encoding().GetString(chunk, text);
    switch (ReadPin(text, twitterPin_)) {
        case SignInAnswer::kDenied:
            return LeaveDenied();
        case SignInAnswer::kGiven:
            return GoOnWithPin();
        case SignInAnswer::kNone:
            return ShowPage(*web_, UrlOf(kTwitterApi, "/"), chunk);
    }
}

void SnsShareForm::LeaveDenied() {
    ForgetTwitter();
    if (isFromAlbum_) TellMainForm(kRequestShareCancelled);
    (void)(isFromAlbum_ ? ReturnToAlbumForm() : ReturnToSettingForm());
}

void SnsShareForm::GoOnWithPin() {
    if (isFromAlbum_) {
        (void)ReturnToAlbumForm();
        TellMainForm(kRequestTwitterPin);
    } else {
        (void)SendUserEvent(kRequestTwitterPin, nullptr);
    }
}

// What the server calls a success is taken for one: a token that is none is found out by the
// upload.
void SnsShareForm::KeepTwitterTokens() {
    twitterPin_ = {};
    Keep(kTwitterTokenKey, twitterToken_);
    Keep(kTwitterSecretKey, twitterSecret_);
    if (isFromAlbum_) {
        (void)SendUserEvent(kRequestTwitterShare, nullptr);
    } else {
        (void)ReturnToSettingForm();
    }
}

}  // namespace Kivo
