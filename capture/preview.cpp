#include <osp/system/runtime_info.h>

#include "capture/main_form.h"
#include "effects/composition.h"
#include "effects/conversions/preview_conversion.h"
#include "ui/overlay.h"

namespace Kivo {

using Osp::Base::ByteBuffer;
using Osp::Ui::Controls::OverlayPanel;
using Osp::Ui::Controls::RendererRotation;

namespace {

constexpr int kPrimaryPanelWidth = 800;
constexpr int kSecondaryPanelWidth = 360;
constexpr int kFramesPerBlend = 8;
constexpr int kPhotographCountdown = 5;
constexpr int kFrontDelayMs = 1000;

constexpr const char* kMemoryValues[] = {"AvailableMemory", "AllocatedMemory",
                                         "MaxAllocatableMemory"};

}  // namespace

void MainForm::OnCameraPreviewed(ByteBuffer& previewedData, result r) {
    if (Osp::Failed(r)) {
        (void)Stop();
        AbandonCountdown();
        return;
    }
    if (Osp::Succeeded(DrawPreview(*overlay_, previewedData)) && IsVisible()) {
        (void)overlay_->Show();
    }
}

result MainForm::DrawPreview(OverlayPanel& panel, ByteBuffer& data) {
    if (!camera_->IsConnected()) AbandonCountdown();
    (void)panel.SetRendererRotation(IsPrimary() ? RendererRotation::kNone
                                                : RendererRotation::kQuarterTurn);
    result r = result::kSuccess;
    const bool isBlending = setting_->IsPreviewEnabled();
    if (!isBlending && !isSwitchingCamera_) {
        panelWidth_ = IsPrimary() ? kPrimaryPanelWidth : kSecondaryPanelWidth;
        r = panel.SetInputBuffer({panelWidth_, panelHeight_}, data, camera_->GetPreviewResolution(),
                                 Osp::Ui::Controls::BufferPixelFormat::kYuv420Planar);
    }
    if (isBlending) {
        ++frameCounter_;
    } else {
        blend_.reset();
    }
    if (frontCountdown_ == 0) {
        if (Effects::FramesPerPhotograph(setting_->GetCameraType()) > 1) {
            overlay_->SetCaptureButton(shotCounter_);
        }
        PlayShutterSound();
    }
    if (frameCounter_ == kFramesPerBlend || frontCountdown_ >= 0) ConvertFrame(panel, data);
    if (!isFirstFrameShown_) FinishSwitch();
    return r;
}

void MainForm::ConvertFrame(OverlayPanel& panel, ByteBuffer& data) {
    frameCounter_ = 0;
    const auto [width, height] = camera_->GetPreviewResolution();
    const auto converted = std::make_unique<ByteBuffer>();
    if (Osp::Failed(converted->Construct(width * height * Effects::kBytesPerPixel))) return;
    const Effects::Pixels pixels{converted->GetPointer(), width, height};
    ConvertPreview(data.GetPointer(), pixels);

    if (!IsPrimary() && frontCountdown_ == kPhotographCountdown) {
        frontCountdown_ = -1;
        const bool isLast = Effects::IsLastFrame(setting_->GetCameraType(), shotCounter_);
        if (!isLast && setting_->GetFlashState() == FlashState::kOn) overlay_->ShowScreen();
        TakeFrame(converted);
        FollowUp(kFrontDelayMs, kFrontDelayMs);
    } else if (!IsPrimary() && frontCountdown_ >= 0) {
        ++frontCountdown_;
    }
    ShowBlend(panel, pixels);
}

void MainForm::ShowBlend(OverlayPanel& panel, Effects::ConstPixels converted) {
    if (!blend_) {
        blend_ = std::make_unique<ByteBuffer>();
        const auto size = PreviewFrameBytes(converted.width, converted.height);
        if (Osp::Failed(blend_->Construct(static_cast<int>(size)))) return;
    }
    const bool hasFirstFrame = setting_->GetCameraType() == CameraType::kMix && shotCounter_ == 1;
    EncodePreview(
        converted,
        hasFirstFrame ? Effects::ConstPixels(View(accumulation_)) : Effects::ConstPixels{},
        blend_->GetPointer());
    (void)panel.SetInputBuffer({panelWidth_, panelHeight_}, *blend_,
                               {converted.width, converted.height},
                               Osp::Ui::Controls::BufferPixelFormat::kYuv420Planar);
}

void MainForm::FinishSwitch() {
    (void)splash_->SetShowState(false);
    overlay_->ShowScreen();
    isFirstFrameShown_ = true;
    isSwitchingCamera_ = false;
    // For the trace only; nothing here depends on them.
    for (const char* const value : kMemoryValues) {
        long long ignored = 0;
        (void)Osp::System::RuntimeInfo::GetValue(value, ignored);
    }
}

}  // namespace Kivo
