// What the column and the sheets do.
//
// A photograph that is being sent keeps the album busy, which refuses every touch but that of the
// button that cancels. Who clears it: the button, the share form with how it ended or by coming
// back from it, and going to the background, which is how the e-mail program's coming and going
// looks from here.
#include <algorithm>
#include <cassert>
#include <memory>
#include <utility>

#include <osp/app/app_manager.h>
#include <osp/base/collection/array_list.h>
#include <osp/content/content_manager.h>
#include <osp/content/image_content_info.h>
#include <osp/io/file.h>
#include <osp/ui/controls/message_box.h>

#include "album/album_form.h"
#include "album/album_layout.h"
#include "album/album_sheet.h"
#include "app/model/action_ids.h"
#include "app/model/request_ids.h"
#include "share/sns_share_form.h"
#include "ui/presenting.h"

namespace Kivo {

using Osp::App::AppControl;
using Osp::App::AppManager;
using Osp::Base::String;

namespace {

constexpr Osp::Graphics::Dimension kThumbnailRoom{130, 78};
constexpr int kMailArguments = 10;

void Tell(const char* text) {
    Osp::Ui::Controls::MessageBox box;
    const result r = box.Construct("", text, Osp::Ui::Controls::MessageBoxStyle::kOk, 0);
    if (Osp::Succeeded(r)) (void)box.ShowAndWait();
}

/// Deletes the file and what is registered of it. One that has vanished is as good as deleted.
result Delete(const String& path) {
    Osp::Content::ContentManager manager;
    Osp::Content::ImageContentInfo info;
    result r = manager.Construct();
    if (Osp::Succeeded(r)) r = info.Construct(path, "", false);
    if (Osp::Succeeded(r)) r = manager.CreateContent(info);
    if (Osp::Succeeded(r)) return manager.DeleteContent(info.GetContentId());
    Osp::Io::FileAttributes attributes;
    const bool isGone = r == result::kFileNotFound &&
                        Osp::Io::File::GetAttributes(path, attributes) == result::kFileNotFound;
    return isGone ? result::kSuccess : r;
}

}  // namespace

void AlbumForm::OnActionPerformed(const Osp::Ui::Control&, int actionId) {
    const bool isBlocked = std::exchange(isPressRefused_, false) || IsBlocked();
    switch (actionId) {
        case kActionReturn:
            if (!isBlocked) (void)ReturnToMainForm(true);
            break;
        case kActionOpenShare:
            if (!isBlocked) OpenShare();
            break;
        case kActionOpenDelete:
            if (!isBlocked) OpenDelete();
            break;
        case kActionOpenWall:
            if (!isBlocked) OpenWall();
            break;
        case kActionEmail:
            SendByMail();
            break;
        case kActionDelete:
            DeleteCurrent();
            break;
        case kActionKeep:
        case kActionCancelShare:
            Cancel();
            break;
        case kActionShareOutcomeSeen:
            CloseSheets();
            break;
        case kActionShareTwitter:
            ShareWith(true);
            break;
        case kActionShareFacebook:
            ShareWith(false);
            break;
        case kActionMessageDone:
            ShareWithMessage();
            break;
        case kActionMessageCancelled:
            CancelMessage();
            break;
        default:
            break;
    }
}

void AlbumForm::OpenShare() {
    information_ = {};
    isShareShown_ = true;
    Refresh();
    Reveal(*shareSheet_);
}

void AlbumForm::OpenDelete() {
    information_ = {};
    isDeleteShown_ = true;
    deleteName_->SetText(String(names_[static_cast<std::size_t>(index_)]));
    Osp::Graphics::Bitmap thumbnail;
    if (bitmap_.GetWidth() > 0) {
        const auto size =
            AlbumLayout::Fitted({bitmap_.GetWidth(), bitmap_.GetHeight()}, kThumbnailRoom);
        // Without it, the name has to do.
        (void)thumbnail.Construct(bitmap_, size);
    }
    deleteThumbnail_->SetBackgroundBitmap(thumbnail);
    Refresh();
    Reveal(*deleteSheet_);
}

void AlbumForm::CloseSheets() {
    isShareShown_ = false;
    isDeleteShown_ = false;
    for (AlbumSheet* const sheet : {shareSheet_, deleteSheet_, outcomeSheet_}) {
        (void)sheet->SetShowState(false);
    }
}

// The background has ended the busy state of an upload, but not the upload.
void AlbumForm::Cancel() {
    if (isBusy_ || progressSheet_->GetShowState()) {
        (void)shareForm_->SendUserEvent(kRequestShareCancelled, nullptr);
        isBusy_ = false;
        sharing_.clear();
    } else {
        CloseSheets();
    }
    shareForm_->ClearShareMessage();
    SetProgressShown(false);
    Refresh();
}

// Busy until the application comes back from the background, which it does without an e-mail
// program as well.
void AlbumForm::SendByMail() {
    CloseSheets();
    isBusy_ = true;
    Refresh();
    Osp::Base::Collection::ArrayList arguments;
    if (Osp::Failed(arguments.Construct(kMailArguments))) return;
    const std::unique_ptr<AppControl> mail(
        AppManager::FindAppControlN(Osp::App::APPCONTROL_EMAIL, Osp::App::OPERATION_EDIT));
    String subject("subject:");
    String attachment("attachments:");
    attachment.Append(photo_.path);
    for (String* argument : {&subject, &attachment}) (void)arguments.Add(argument);
    // Where it cannot be started, the photograph is gone; nobody else would end the busy state.
    if (mail && Osp::Failed(mail->Start(&arguments))) isBusy_ = false;
}

void AlbumForm::DeleteCurrent() {
    assert(isDeleteShown_ && !IsEmpty());
    const result r = Delete(photo_.path);
    CloseSheets();
    shareForm_->ClearShareMessage();
    if (Osp::Failed(r)) {
        Refresh();
        return Tell("The picture could not be deleted.");
    }
    names_.erase(names_.begin() + index_);
    index_ = std::clamp(index_, 0, std::max(0, static_cast<int>(names_.size()) - 1));
    loader_.Clear();
    LoadCurrent();
}

}  // namespace Kivo
