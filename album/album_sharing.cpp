// How a photograph is shared: signing in where nobody is, the message, the upload, its outcome.
//
// The share form does the work. While it shows pages, this form waits to become current again; a
// message is asked for when the share form says so after that. While it uploads, the sheet in
// progress lies over the photograph, so that no other is turned to: it stays through the
// background, in which the upload goes on.
#include <memory>
#include <utility>

#include <osp/base/collection/array_list.h>

#include "album/album_form.h"
#include "album/album_sheet.h"
#include "app/model/request_ids.h"
#include "share/sns_share_form.h"
#include "ui/presenting.h"

namespace Kivo {

using Osp::Base::String;

/// What is said of it.
struct AlbumForm::Outcome {
    long request;
    bool isOfUpload;
    const char* title;
    const char* advice;
};

void AlbumForm::SetProgressShown(bool shown) {
    if (shown) {
        Reveal(*progressSheet_);
    } else {
        (void)progressSheet_->SetShowState(false);
    }
}

void AlbumForm::ShareWith(bool isTwitter) {
    const String token = isTwitter ? shareForm_->GetTwToken() : shareForm_->GetFbToken();
    isBusy_ = true;
    CloseSheets();
    SetProgressShown(true);
    Refresh();
    if (token.IsEmpty()) return SignIn(isTwitter);
    AskForMessage(isTwitter ? kRequestTwitterShare : kRequestFacebookShare);
}

void AlbumForm::SignIn(bool isTwitter) {
    isSigningIn_ = true;
    if (Osp::Failed(frame_->SetCurrentForm(shareForm_))) return EndSignIn();
    (void)AskShareForm(isTwitter ? kRequestTwitterSignInToShare : kRequestFacebookSignInToShare,
                       true);
    (void)shareForm_->Show();
    (void)shareForm_->Draw();
}

// Nothing is under way then. Whether it went well is heard next, and nothing at all of some ways to
// fail.
void AlbumForm::EndSignIn() {
    if (!std::exchange(isSigningIn_, false)) return;
    isBusy_ = false;
    SetProgressShown(false);
}

void AlbumForm::AskForMessage(long request) {
    pendingRequest_ = request;
    (void)messageArea_->Clear();
    (void)message_.SetShowState(true);
    (void)message_.Show();
    (void)message_.Draw();
}

void AlbumForm::ShareWithMessage() {
    (void)message_.SetShowState(false);
    isBusy_ = true;
    sharing_ = names_[static_cast<std::size_t>(index_)];
    SetProgressShown(true);
    Refresh();
    shareForm_->SetShareMessage(messageArea_->GetText());
    // The photograph of a sign-in was handed over with it.
    (void)AskShareForm(pendingRequest_, pendingRequest_ != kRequestTwitterPin);
}

void AlbumForm::CancelMessage() {
    isBusy_ = false;
    CloseSheets();
    SetProgressShown(false);
    (void)message_.SetShowState(false);
    shareForm_->ClearShareMessage();
    // A token whose PIN has not been handed in is good for nothing.
    if (pendingRequest_ == kRequestTwitterPin) shareForm_->ResetTwToken();
    Refresh();
}

result AlbumForm::AskShareForm(long request, bool withPhotograph) {
    if (!withPhotograph) return shareForm_->SendUserEvent(request, nullptr);
    auto arguments = std::make_unique<Osp::Base::Collection::ArrayList>();
    auto path = std::make_unique<String>(photo_.path);
    result r = arguments->Construct(1);
    if (Osp::Succeeded(r)) r = arguments->Add(path.get());
    if (Osp::Failed(r)) return r;
    (void)path.release();  // the list's receiver deletes both
    return shareForm_->SendUserEvent(request, arguments.release());
}

void AlbumForm::FinishShare(long requestId) {
    static constexpr Outcome kOutcomes[] = {
        {kRequestShared, true, "Your picture has been shared.", ""},
        {kRequestShareCancelled, true, "The picture was not shared.",
         "The connection failed. Please try again."},
        {kRequestShareCancelled, false, "The picture was not shared.", "Nobody has signed in."},
        {kRequestFacebookFailed, true, "Facebook did not take the picture.",
         "Please sign in again and try once more."},
        {kRequestTwitterFailed, true, "Twitter did not take the picture.",
         "Please sign in again and try once more."},
        {kRequestOtherShareFailed, true, "The picture was not shared.", "Please try again."}};
    const std::string name = std::exchange(sharing_, {});
    isBusy_ = false;
    isSigningIn_ = false;
    SetProgressShown(false);
    if (requestId == kRequestShared && !name.empty()) shared_.insert(name);
    Refresh();
    const bool isOfSignIn = requestId == kRequestShareCancelled && name.empty();
    for (const Outcome& outcome : kOutcomes) {
        if (outcome.request != requestId || outcome.isOfUpload == isOfSignIn) continue;
        outcomeTitle_->SetText(outcome.title);
        outcomeAdvice_->SetText(outcome.advice);
        return Reveal(*outcomeSheet_);
    }
}

}  // namespace Kivo
