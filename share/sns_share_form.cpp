// The current request is the state: what a service or a page reports is for it. What ends what is
// kept here:
//
//   call, body, photograph   the answer, the abort, the next request, leaving, the end
//   page                     leaving; a page that is being loaded, the next one
//   current request          the next one; also one that says nothing to this form, as that of
//                            going to the background, after which a sign-in is only closed
//   tokens                   a new sign-in, a refused upload, "Close", the settings' toggles
//   PIN                      the access token that it was good for, a new sign-in
//   message, path            the album's next ones
//
// An upload shows in the album, so the background is told to that form and the upload goes on.
#include "share/sns_share_form.h"

#include "app/model/action_ids.h"
#include "app/model/registry_keys.h"
#include "app/model/request_ids.h"
#include "share/showing_pages.h"
#include "share/softkey.h"

namespace Kivo {

using Osp::Base::String;
using Osp::Base::Collection::IList;
using Osp::Ui::Controls::SoftkeyPosition;

result SnsShareForm::Construct(Osp::Ui::Controls::Frame* frame, Osp::Ui::Controls::Form* mainForm) {
    frame_ = frame;
    mainForm_ = mainForm;
    return Form::Construct(Osp::Ui::Controls::kFormStyleSoftkeys);
}

result SnsShareForm::OnInitializing() {
    result r = SetOrientation(Osp::Ui::Orientation::kLandscape);
    if (Osp::Failed(r)) return r;
    AddKeyEventListener(*this);
    r = AddSoftkey(*this, SoftkeyPosition::kRight, "Close", kActionClose, *this);
    if (Osp::Failed(r)) return r;
    r = AddWeb();
    if (Osp::Failed(r)) return r;
    ShowPlaceholder(*web_);
    ReadTokens();
    return result::kSuccess;
}

result SnsShareForm::AddWeb() {
    auto web = std::make_unique<Osp::Web::Controls::Web>();
    result r = web->Construct({0, 0, 800, 480});
    if (Osp::Failed(r)) return r;
    web->SetDownloadListener(this);
    web->SetLoadingListener(this);
    r = AddControl(web.get());
    if (Osp::Succeeded(r)) web_ = web.release();
    return r;
}

void SnsShareForm::ReadTokens() {
    // A key that is missing leaves its token empty.
    (void)Registry().Get(kFacebookTokenKey, facebookToken_);
    (void)Registry().Get(kTwitterTokenKey, twitterToken_);
    (void)Registry().Get(kTwitterSecretKey, twitterSecret_);
}

result SnsShareForm::OnTerminating() {
    EndCall();
    return result::kSuccess;
}

result SnsShareForm::ReturnToAlbumForm() {
    EndCall();
    web_->Clear();
    TellMainForm(kRequestReturnToAlbum);
    return result::kSuccess;
}

result SnsShareForm::ReturnToSettingForm() {
    EndCall();
    web_->Clear();
    TellMainForm(kRequestReturnToSettings);
    return result::kSuccess;
}

bool SnsShareForm::OnUserEventReceivedN(long requestId, IList* args) {
    currentRequest_ = requestId;
    EndCall();
    const bool isKnown = Begin(requestId, args);
    Form::OnUserEventReceivedN(requestId, args);
    return isKnown;
}

bool SnsShareForm::Begin(long requestId, const IList* args) {
    switch (requestId) {
        case kRequestTwitterSignInToShare:
        case kRequestTwitterSignIn:
            BeginSignIn(requestId == kRequestTwitterSignInToShare, args);
            SignInToTwitter();
            return true;
        case kRequestTwitterPage:
            OpenTwitterPage();
            return true;
        case kRequestTwitterPin:
            PostSigned("/oauth/access_token", true);
            return true;
        case kRequestTwitterShare:
            TakePhotoPath(args);
            UploadToTwitpic();
            return true;
        case kRequestFacebookSignInToShare:
        case kRequestFacebookSignIn:
            BeginSignIn(requestId == kRequestFacebookSignInToShare, args);
            SignInToFacebook();
            return true;
        case kRequestFacebookShare:
            TakePhotoPath(args);
            UploadToFacebook();
            return true;
        default:
            // To cancel, nothing more has to be done.
            return requestId == kRequestShareCancelled;
    }
}

void SnsShareForm::BeginSignIn(bool isFromAlbum, const IList* args) {
    photoPath_ = {};
    isFromAlbum_ = isFromAlbum;
    if (isFromAlbum) TakePhotoPath(args);
}

void SnsShareForm::TakePhotoPath(const IList* args) {
    const auto* const path =
        args == nullptr ? nullptr : dynamic_cast<const String*>(args->GetAt(0));
    if (path != nullptr) photoPath_ = *path;
}

void SnsShareForm::TellMainForm(long requestId) {
    (void)mainForm_->SendUserEvent(requestId, nullptr);
}

void SnsShareForm::ForgetTwitter() {
    twitterToken_ = {};
    twitterSecret_ = {};
}

void SnsShareForm::OnActionPerformed(const Osp::Ui::Control&, int actionId) {
    if (actionId == kActionClose) Close();
}

// The key is the soft key.
void SnsShareForm::OnKeyPressed(const Osp::Ui::Control&, Osp::Ui::KeyCode keyCode) {
    if (keyCode == Osp::Ui::KeyCode::kBack) Close();
}

// Whoever closes Facebook's pages deliberately has to sign in to Twitter again, and not the other
// way round.
void SnsShareForm::Close() {
    ForgetTwitter();
    if (isFromAlbum_) {
        TellMainForm(kRequestShareCancelled);
        (void)ReturnToAlbumForm();
    } else {
        (void)ReturnToSettingForm();
    }
}

result SnsShareForm::OpenPost(const Service& service, const char* path) {
    auto [session, transaction] = OpenCall(service, Osp::Net::Http::HttpMethod::kPost, path, *this);
    session_ = std::move(session);
    transaction_ = std::move(transaction);
    return transaction_ ? result::kSuccess : result::kFailure;
}

void SnsShareForm::EndCall() {
    body_.reset();
    transaction_.reset();
    session_.reset();
    photo_.reset();
}

void SnsShareForm::OnTransactionReadyToRead(HttpSession&, HttpTransaction& transaction, int) {
    if (transaction.GetResponse().GetStatusCode() == kHttpOk) TakeTokens(transaction);
}

void SnsShareForm::OnTransactionCompleted(HttpSession&, HttpTransaction& transaction) {
    const bool hasSucceeded = transaction.GetResponse().GetStatusCode() == kHttpOk;
    EndCall();
    hasSucceeded ? Succeed() : Fail();
}

void SnsShareForm::OnTransactionAborted(HttpSession&, HttpTransaction&, result) {
    EndCall();
    if (IsUploading()) TellMainForm(kRequestShareCancelled);
}

void SnsShareForm::Succeed() {
    switch (currentRequest_) {
        case kRequestTwitterSignInToShare:
        case kRequestTwitterSignIn:
            return AskTheUser();
        case kRequestTwitterPin:
            return KeepTwitterTokens();
        case kRequestTwitterShare:
        case kRequestFacebookShare:
            return TellMainForm(kRequestShared);
        default:
            return;
    }
}

// A sign-in that fails says nothing: the page stays, to be closed. The registry keeps the tokens of
// a refused upload, which a new sign-in replaces.
void SnsShareForm::Fail() {
    switch (currentRequest_) {
        case kRequestTwitterShare:
            ForgetTwitter();
            return TellMainForm(kRequestTwitterFailed);
        case kRequestFacebookShare:
            facebookToken_ = {};
            return TellMainForm(kRequestFacebookFailed);
        default:
            return;
    }
}

}  // namespace Kivo
