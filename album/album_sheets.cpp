// What lies over the photograph: the sheets and the message.
#include <algorithm>
#include <memory>

#include "album/album_form.h"
#include "album/album_sheet.h"
#include "app/model/action_ids.h"

namespace Kivo {

using Osp::Graphics::Bitmap;
using Osp::Graphics::Rectangle;

namespace {

constexpr int kSheetRadius = 22;
constexpr int kPillRadius = 27;
constexpr int kTitleSize = 34;
constexpr int kLineSize = 27;

}  // namespace

bool AlbumForm::IsSheetShown() const {
    const AlbumSheet* const waiting[] = {progressSheet_, outcomeSheet_};
    const bool isWaiting = std::ranges::any_of(
        waiting, [](const AlbumSheet* sheet) { return sheet != nullptr && sheet->GetShowState(); });
    return isShareShown_ || isDeleteShown_ || isWaiting;
}

result AlbumForm::AddSheets() {
    result r = AddSheet(shareSheet_, {182, 62, 360, 366}, kSheetRadius);
    if (Osp::Succeeded(r)) r = FillShareSheet();
    if (Osp::Succeeded(r)) r = AddSheet(deleteSheet_, {132, 122, 460, 240}, kSheetRadius);
    if (Osp::Succeeded(r)) r = FillDeleteSheet();
    if (Osp::Succeeded(r)) r = AddSheet(progressSheet_, {217, 160, 290, 56}, kPillRadius);
    if (Osp::Succeeded(r)) r = FillProgressSheet();
    if (Osp::Succeeded(r)) r = AddSheet(outcomeSheet_, {82, 122, 560, 240}, kSheetRadius);
    if (Osp::Succeeded(r)) r = FillOutcomeSheet();
    return Osp::Failed(r) ? r : FillMessage();
}

result AlbumForm::AddSheet(AlbumSheet*& sheet, const Rectangle& place, int radius) {
    auto created = std::make_unique<AlbumSheet>();
    result r = created->Construct(place, radius);
    if (Osp::Succeeded(r)) r = AddControl(created.get());
    if (Osp::Succeeded(r)) sheet = created.release();
    return r;
}

result AlbumForm::FillShareSheet() {
    using Kind = SheetButtonKind;
    if (!shareSheet_->AddCentredLine({182, 81, 360, kTitleSize}, "Share this picture",
                                     kTitleSize)) {
        return result::kOutOfMemory;
    }
    const struct {
        Kind kind;
        int y;
        const char* text;
        Bitmap icon;
        int actionId;
    } rows[] = {{Kind::kPaper, 128, "Twitter", pictures_.twitter, kActionShareTwitter},
                {Kind::kPaper, 200, "Facebook", pictures_.facebook, kActionShareFacebook},
                {Kind::kPaper, 272, "E-mail", pictures_.mail, kActionEmail},
                {Kind::kInk, 348, "Cancel", {}, kActionCancelShare}};
    for (const auto& row : rows) {
        const result r = AddSheetButton(*shareSheet_, row.kind, {206, row.y, 312, 64}, row.text,
                                        row.icon, row.actionId, *this);
        if (Osp::Failed(r)) return r;
    }
    return result::kSuccess;
}

result AlbumForm::FillDeleteSheet() {
    deleteThumbnail_ =
        deleteSheet_->AddLine({160, 150, 130, 78}, "", Osp::Graphics::kFontStylePlain, kLineSize);
    deleteName_ =
        deleteSheet_->AddLine({312, 193, 268, 34}, "", Osp::Graphics::kFontStylePlain, kLineSize);
    const auto* const question = deleteSheet_->AddLine({312, 155, 268, 42}, "Delete this picture?",
                                                       Osp::Graphics::kFontStyleBold, kTitleSize);
    if (!deleteThumbnail_ || !deleteName_ || !question) return result::kOutOfMemory;
    const result r = AddSheetButton(*deleteSheet_, SheetButtonKind::kRed, {156, 262, 200, 76},
                                    "Delete", {}, kActionDelete, *this);
    return Osp::Failed(r) ? r
                          : AddSheetButton(*deleteSheet_, SheetButtonKind::kPaper,
                                           {368, 262, 200, 76}, "Keep", {}, kActionKeep, *this);
}

result AlbumForm::FillProgressSheet() {
    constexpr int kPillTextSize = 41;
    if (!progressSheet_->AddCentredLine({217, 167, 290, 42}, "Sending\u2026", kPillTextSize)) {
        return result::kOutOfMemory;
    }
    return AddSheetButton(*progressSheet_, SheetButtonKind::kInk, {262, 248, 200, 76}, "Cancel", {},
                          kActionCancelShare, *this);
}

result AlbumForm::FillOutcomeSheet() {
    outcomeTitle_ =
        outcomeSheet_->AddLine({110, 155, 520, 42}, "", Osp::Graphics::kFontStyleBold, kTitleSize);
    outcomeAdvice_ =
        outcomeSheet_->AddLine({110, 203, 520, 34}, "", Osp::Graphics::kFontStylePlain, kLineSize);
    if (!outcomeTitle_ || !outcomeAdvice_) return result::kOutOfMemory;
    return AddSheetButton(*outcomeSheet_, SheetButtonKind::kInk, {262, 262, 200, 76}, "OK", {},
                          kActionShareOutcomeSeen, *this);
}

result AlbumForm::FillMessage() {
    result r = message_.Construct("Enter message", {480, 310});
    auto area = std::make_unique<Osp::Ui::Controls::EditArea>();
    if (Osp::Succeeded(r)) r = area->Construct({22, 56, 436, 154});
    if (Osp::Succeeded(r)) r = message_.AddControl(area.get());
    if (Osp::Failed(r)) return r;
    messageArea_ = area.release();
    r = AddSheetButton(message_, SheetButtonKind::kRed, {80, 220, 150, 80}, "Done", {},
                       kActionMessageDone, *this);
    return Osp::Failed(r) ? r
                          : AddSheetButton(message_, SheetButtonKind::kPaper, {250, 220, 150, 80},
                                           "Cancel", {}, kActionMessageCancelled, *this);
}

}  // namespace Kivo
