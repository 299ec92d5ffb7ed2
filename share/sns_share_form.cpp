#include "share/sns_share_form.h"

#include "app/model/registry_keys.h"
#include "app/model/request_ids.h"

namespace Kivo {

using Osp::Base::String;

result SnsShareForm::Construct(Osp::Ui::Controls::Frame*, Osp::Ui::Controls::Form* mainForm) {
    mainForm_ = mainForm;
    return Form::Construct(0);
}

result SnsShareForm::OnInitializing() {
    const result r = SetOrientation(Osp::Ui::Orientation::kLandscape);
    if (Osp::Failed(r)) return r;
    // A key that is missing leaves its token empty.
    (void)Registry().Get(kFacebookTokenKey, facebookToken_);
    (void)Registry().Get(kTwitterTokenKey, twitterToken_);
    (void)Registry().Get(kTwitterSecretKey, twitterSecret_);
    return result::kSuccess;
}

result SnsShareForm::ReturnToAlbumForm() {
    return mainForm_->SendUserEvent(kRequestReturnToAlbum, nullptr);
}

result SnsShareForm::ReturnToSettingForm() {
    return mainForm_->SendUserEvent(kRequestReturnToSettings, nullptr);
}

bool SnsShareForm::OnUserEventReceivedN(long requestId, Osp::Base::Collection::IList* args) {
    Form::OnUserEventReceivedN(requestId, args);
    switch (requestId) {
        case kRequestFacebookSignIn:
        case kRequestTwitterSignIn:
            (void)ReturnToSettingForm();
            return true;
        case kRequestFacebookSignInToShare:
        case kRequestTwitterSignInToShare:
            (void)mainForm_->SendUserEvent(kRequestShareCancelled, nullptr);
            (void)ReturnToAlbumForm();
            return true;
        case kRequestFacebookShare:
            (void)mainForm_->SendUserEvent(kRequestFacebookFailed, nullptr);
            return true;
        case kRequestTwitterPin:
        case kRequestTwitterShare:
            (void)mainForm_->SendUserEvent(kRequestTwitterFailed, nullptr);
            return true;
        default:
            return false;
    }
}

}  // namespace Kivo
