// The first page that is loaded is the placeholder, and fetches the results; those that follow
// fetch nothing. The call ends with its answer, the next request (also that of going to the
// background), leaving and the end. Leaving clears the control, so that no page that somebody has
// linked to goes on unseen; the mosaic waits in it until the wall is opened again.
#include "share/wall/kivo_wall_form.h"

#include <osp/base/utility/math.h>

#include "app/model/action_ids.h"
#include "app/model/request_ids.h"
#include "share/services.h"
#include "share/showing_pages.h"
#include "share/softkey.h"
#include "share/text/bytes.h"
#include "share/wall/wall_page.h"
#include "share/wall/wall_scan.h"

namespace Kivo {

using Osp::Base::ByteBuffer;
using Osp::Base::String;
using Osp::Ui::Controls::SoftkeyPosition;

namespace {

constexpr double kZoomLevel = 0.5;

}  // namespace

result KivoWallForm::Construct(Osp::Ui::Controls::Frame* frame,
                               Osp::Ui::Controls::Form* albumForm) {
    frame_ = frame;
    albumForm_ = albumForm;
    return Form::Construct(Osp::Ui::Controls::kFormStyleSoftkeys);
}

result KivoWallForm::OnInitializing() {
    result r = SetOrientation(Osp::Ui::Orientation::kLandscape);
    if (Osp::Failed(r)) return r;
    AddKeyEventListener(*this);
    r = AddSoftkey(*this, SoftkeyPosition::kRight, "Close", kActionClose, *this);
    if (Osp::Failed(r)) return r;
    r = AddSoftkey(*this, SoftkeyPosition::kLeft, "More", kActionMoreOfWall, *this);
    if (Osp::Failed(r)) return r;
    r = AddWeb();
    if (Osp::Succeeded(r)) ShowWall();
    return r;
}

result KivoWallForm::AddWeb() {
    auto web = std::make_unique<Osp::Web::Controls::Web>();
    result r = web->Construct({0, 0, 800, 480});
    if (Osp::Failed(r)) return r;
    web->SetDownloadListener(this);
    web->SetLoadingListener(this);
    web->SetScriptsEnabled(false);
    r = AddControl(web.get());
    if (Osp::Succeeded(r)) web_ = web.release();
    return r;
}

result KivoWallForm::OnTerminating() {
    EndCall();
    return result::kSuccess;
}

result KivoWallForm::ReturnToAlbumForm() {
    EndCall();
    // What waits in the control is its own copy.
    web_->Clear();
    ShowWall();
    page_.reset();
    result r = frame_->SetCurrentForm(albumForm_);
    if (Osp::Failed(r)) return r;
    r = frame_->Draw();
    return Osp::Failed(r) ? r : frame_->Show();
}

bool KivoWallForm::OnUserEventReceivedN(long requestId, Osp::Base::Collection::IList* args) {
    EndCall();
    const bool isKnown = requestId == kRequestFetchWall;
    if (isKnown) Fetch();
    Form::OnUserEventReceivedN(requestId, args);
    return isKnown;
}

void KivoWallForm::OnActionPerformed(const Osp::Ui::Control&, int actionId) {
    if (actionId == kActionClose) (void)ReturnToAlbumForm();
    if (actionId == kActionMoreOfWall) (void)SendUserEvent(kRequestFetchWall, nullptr);
}

void KivoWallForm::OnKeyPressed(const Osp::Ui::Control&, Osp::Ui::KeyCode keyCode) {
    if (keyCode != Osp::Ui::KeyCode::kBack) return;
    if (IsAway()) {
        ShowWall();
    } else {
        (void)ReturnToAlbumForm();
    }
}

// The wall's own pages come from nowhere, which is not on the web.
bool KivoWallForm::IsAway() const {
    return web_->GetUrl().StartsWith("http");
}

void KivoWallForm::ShowWall() {
    if (!page_) {
        isFirstPageLoaded_ = false;
        return ShowPlaceholder(*web_);
    }
    ShowPage(*web_, kNowhere, *page_);
    (void)web_->SetZoomLevel(kZoomLevel);
}

void KivoWallForm::OnLoadingCompleted() {
    if (isFirstPageLoaded_) return;
    isFirstPageLoaded_ = true;
    (void)SendUserEvent(kRequestFetchWall, nullptr);
}

void KivoWallForm::Fetch() {
    auto [session, transaction] = OpenCall(kTwitpicWeb, Osp::Net::Http::HttpMethod::kGet,
                                           "/search/show?q=%23KIVO&type=mixed&page=1", *this);
    session_ = std::move(session);
    transaction_ = std::move(transaction);
    if (transaction_ && Osp::Failed(transaction_->Submit())) EndCall();
}

void KivoWallForm::EndCall() {
    transaction_.reset();
    session_.reset();
}

void KivoWallForm::OnTransactionReadyToRead(HttpSession&, HttpTransaction& transaction, int) {
    if (transaction.GetResponse().GetStatusCode() != kHttpOk) return;
    const std::unique_ptr<ByteBuffer> body(transaction.GetResponse().ReadBodyN());
    if (!body) return;
    TakePage(ComposeWall(ScanWall(TextOfAnswer(*body)), Osp::Base::Utility::Math::Rand));
}

void KivoWallForm::TakePage(const String& page) {
    page_ = Utf8BytesOf(page);
}

void KivoWallForm::OnTransactionCompleted(HttpSession&, HttpTransaction& transaction) {
    const bool hasSucceeded = transaction.GetResponse().GetStatusCode() == kHttpOk;
    EndCall();
    if (!hasSucceeded) return;
    // An answer of nothing was never read.
    if (!page_) TakePage(ComposeEmptyWall());
    ShowWall();
}

void KivoWallForm::OnTransactionAborted(HttpSession&, HttpTransaction&, result) {
    EndCall();
    TakePage(ComposeEmptyWall());
    ShowWall();
}

}  // namespace Kivo
