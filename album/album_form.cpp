// The list is made once, from the names alone: no file is opened for it, so that a folder of
// thousands opens as quickly as one of ten. It stays as it is while the album is open, whatever
// other programs do to the folder; a photograph that is gone by the time it is turned to is shown
// as broken. The folder is fixed with the list: a card that is pulled does not turn the list into
// one of other photographs.
#include "album/album_form.h"

#include <algorithm>
#include <memory>

#include <osp/io/dir_enumerator.h>
#include <osp/io/directory.h>
#include <osp/media/image.h>

#include "album/album_list.h"
#include "album/album_sheet.h"
#include "app/model/action_ids.h"
#include "app/model/request_ids.h"
#include "share/wall/kivo_wall_form.h"
#include "ui/leaving.h"

namespace Kivo {

using Osp::Base::String;
using Osp::Graphics::Bitmap;
using Osp::Graphics::Font;

namespace {

constexpr const char* kSound = "/Res/snd_change_album.wav";

std::vector<std::string> ListFolder(const String& folder) {
    std::vector<std::string> names;
    Osp::Io::Directory directory;
    if (Osp::Failed(directory.Construct(folder))) return names;
    const std::unique_ptr<Osp::Io::DirEnumerator> entries(directory.ReadN());
    while (entries && Osp::Succeeded(entries->MoveNext())) {
        names.push_back(entries->GetCurrentDirEntry().GetName().ToUtf8());
    }
    return names;
}

}  // namespace

struct AlbumForm::ColumnButton {
    int actionId;
    int y;
    const char* name;
    Bitmap AlbumPictures::*normal;
    Bitmap AlbumPictures::*pressed;
};

const std::array<AlbumForm::ColumnButton, 4> AlbumForm::kColumn{{
    {kActionReturn, 17, "Back to the camera", &AlbumPictures::back, &AlbumPictures::backDown},
    {kActionOpenShare, 226, "Share", &AlbumPictures::share, &AlbumPictures::shareDown},
    {kActionOpenWall, 311, "Photo wall", &AlbumPictures::wall, &AlbumPictures::wallDown},
    {kActionOpenDelete, 396, "Delete", &AlbumPictures::trash, &AlbumPictures::trashDown},
}};

result AlbumForm::Construct(Osp::Ui::Controls::Frame* frame, Osp::Ui::Controls::Form* mainForm,
                            SnsShareForm* shareForm, CameraSetting* setting) {
    frame_ = frame;
    mainForm_ = mainForm;
    shareForm_ = shareForm;
    setting_ = setting;
    result r = Form::Construct(0);
    if (Osp::Failed(r)) return r;
    Osp::Media::Image decoder;
    r = decoder.Construct();
    if (Osp::Succeeded(r)) r = pictures_.Load(decoder);
    if (Osp::Succeeded(r)) r = ConstructFonts();
    if (Osp::Succeeded(r)) r = loader_.Construct();
    if (Osp::Succeeded(r)) r = timer_.Construct(*this);
    return Osp::Failed(r) ? r : OpenSound();
}

result AlbumForm::ConstructFonts() {
    const struct {
        Font& font;
        int style;
        int size;
    } fonts[] = {{counterFont_, Osp::Graphics::kFontStyleBold, 32},
                 {titleFont_, Osp::Graphics::kFontStyleBold, 36},
                 {lineFont_, Osp::Graphics::kFontStylePlain, 27},
                 {brokenFont_, Osp::Graphics::kFontStyleBold, 78},
                 {emptyFont_, Osp::Graphics::kFontStyleBold, 51}};
    for (const auto& [font, style, size] : fonts) {
        const result r = font.Construct(style, size);
        if (Osp::Failed(r)) return r;
    }
    return result::kSuccess;
}

result AlbumForm::OpenSound() {
    result r = player_.Construct(*this);
    if (Osp::Succeeded(r)) r = player_.SetLooping(false);
    return Osp::Failed(r) ? r : player_.OpenFile(kSound);
}

result AlbumForm::OnInitializing() {
    result r = SetOrientation(Osp::Ui::Orientation::kLandscape);
    if (Osp::Failed(r)) return r;
    AddKeyEventListener(*this);
    AddTouchEventListener(*this);
    r = AddColumn();
    return Osp::Failed(r) ? r : AddSheets();
}

result AlbumForm::AddColumn() {
    for (std::size_t i = 0; i < kColumn.size(); ++i) {
        const ColumnButton& row = kColumn[i];
        auto button = std::make_unique<Osp::Ui::Controls::Button>();
        result r = button->Construct({716, row.y, 68, 68});
        if (Osp::Failed(r)) return r;
        button->SetActionId(row.actionId);
        button->SetName(row.name);
        button->SetNormalBitmap(pictures_.*row.normal);
        button->SetPressedBitmap(pictures_.*row.pressed);
        button->AddActionEventListener(*this);
        button->AddTouchEventListener(*this);
        r = AddControl(button.get());
        if (Osp::Failed(r)) return r;
        column_[i] = button.release();
    }
    Refresh();
    return result::kSuccess;
}

result AlbumForm::OnTerminating() {
    loader_.Clear();
    return timer_.Cancel();
}

// The key is the return button, or else the one that closes what lies over it.
void AlbumForm::OnKeyPressed(const Osp::Ui::Control&, Osp::Ui::KeyCode keyCode) {
    switch (keyCode) {
        case Osp::Ui::KeyCode::kBack:
            if (!isSliding_) GoBack();
            break;
        case Osp::Ui::KeyCode::kLeft:
            if (!IsBlocked()) Swipe(false);
            break;
        case Osp::Ui::KeyCode::kRight:
            if (!IsBlocked()) Swipe(true);
            break;
        default:
            break;
    }
}

void AlbumForm::GoBack() {
    if (message_.GetShowState()) return CancelMessage();
    if (outcomeSheet_->GetShowState()) return CloseSheets();
    if (isBusy_ || IsSheetShown()) return Cancel();
    (void)ReturnToMainForm(true);
}

// The album holds it from then on, as long as it lasts itself.
void AlbumForm::OpenWall() {
    KivoWallForm* wall = wall_.Get();
    if (wall == nullptr) {
        auto made = std::make_unique<KivoWallForm>();
        result r = made->Construct(frame_, this);
        if (Osp::Succeeded(r)) r = frame_->AddControl(made.get());
        if (Osp::Failed(r)) return;
        wall = made.release();
        wall_ = Osp::Ui::WeakControl<KivoWallForm>(*wall);
    }
    if (Osp::Failed(frame_->SetCurrentForm(wall))) return;
    (void)wall->Draw();
    (void)wall->Show();
}

bool AlbumForm::OnUserEventReceivedN(long requestId, Osp::Base::Collection::IList* args) {
    Form::OnUserEventReceivedN(requestId, args);
    switch (requestId) {
        case kRequestBackground:
            // A photograph that is being uploaded goes on, and its sheet with it.
            isBusy_ = false;
            // The finger is off the screen, and nobody will tell of its release.
            ForgetTouch();
            return true;
        case kRequestAlbumCreated:
            BuildList();
            return true;
        case kRequestBecameCurrent:
            EndSignIn();
            RequestRedraw();
            return true;
        case kRequestFacebookShare:
        case kRequestTwitterPin:
            AskForMessage(requestId);
            return true;
        case kRequestShared:
        case kRequestShareCancelled:
        case kRequestFacebookFailed:
        case kRequestTwitterFailed:
        case kRequestOtherShareFailed:
            FinishShare(requestId);
            return true;
        default:
            return false;
    }
}

void AlbumForm::BuildList() {
    folder_ = FolderOf(StorageInUse(*setting_));
    names_ = ListPhotographs(ListFolder(folder_));
    index_ = std::max(0, static_cast<int>(names_.size()) - 1);
    isListed_ = true;
    loader_.Clear();
    LoadCurrent();
}

void AlbumForm::LoadCurrent() {
    information_ = {};
    photo_ = {};
    bitmap_ = Bitmap();
    if (!IsEmpty()) {
        photo_ = loader_.Load(PathOf(names_[static_cast<std::size_t>(index_)]), bitmap_);
        PrepareNeighbours();
    }
    Refresh();
}

void AlbumForm::PrepareNeighbours() {
    std::vector<String> paths;
    for (const int neighbour : {index_ - 1, index_ + 1}) {
        if (neighbour < 0 || neighbour >= static_cast<int>(names_.size())) continue;
        paths.push_back(PathOf(names_[static_cast<std::size_t>(neighbour)]));
    }
    loader_.Prepare(paths);
}

String AlbumForm::PathOf(const std::string& name) const {
    return String(std::string(folder_) + "/" + name);
}

result AlbumForm::ReturnToMainForm(bool notify) {
    names_.clear();
    bitmap_ = Bitmap();
    if (KivoWallForm* const wall = wall_.Get()) (void)frame_->RemoveControl(*wall);
    return LeaveForMainForm(*frame_, *mainForm_, *this,
                            notify ? std::optional(kRequestReturnFromAlbum) : std::nullopt);
}

}  // namespace Kivo
