#include <cstddef>
#include <new>

#include "app/model/action_ids.h"
#include "capture/main_form.h"
#include "effects/composition.h"
#include "effects/conversions/bmp_rows.h"
#include "ui/overlay.h"
#include "ui/player_stop.h"

namespace Kivo {

using Osp::Base::ByteBuffer;
using Osp::Media::CameraState;

namespace {

constexpr int kPictureTimeoutMs = 3000;
constexpr int kActionDelayMs = 100;
constexpr int kQuadDelayMs = 600;
constexpr int kBmpHeaderBytes = 54;

}  // namespace

void MainForm::OnKeyPressed(const Osp::Ui::Control&, Osp::Ui::KeyCode keyCode) {
    if (keyCode == Osp::Ui::KeyCode::kCamera && MayCapture()) PreCapture();
}

// The key is the shutter button: what disables, hides or covers the one disables the other.
bool MainForm::MayCapture() const {
    return overlay_->IsButtonEnabled(kActionCapture) && overlay_->GetShowState() &&
           !splash_->GetShowState();
}

void MainForm::PreCapture() {
    overlay_->SetFocused(true);
    EnableControls(false);
    PrepareTables();
    BeginFrame();
}

void MainForm::BeginFrame() {
    if (Osp::Failed(IsPrimary() ? StartCapture() : CaptureFromPreview())) RefuseFrame();
}

result MainForm::EnsurePreview() {
    if (!camera_) return result::kInvalidState;
    if (camera_->GetState() != CameraState::kPreviewing) {
        (void)camera_->PowerOff();
        // A power cycle alone would leave a camera without a preview, which cannot capture.
        const result r = Start(true);
        if (Osp::Failed(r)) return r;
    }
    // The picture that says that the camera is gone is never a photograph.
    return camera_->IsConnected() ? result::kSuccess : result::kObjectNotFound;
}

result MainForm::CaptureFromPreview() {
    const result r = EnsurePreview();
    if (Osp::Failed(r)) return r;
    frontCountdown_ = 0;
    if (setting_->GetFlashState() == FlashState::kOn) overlay_->FlashEffect();
    return result::kSuccess;
}

result MainForm::StartCapture() {
    const result r = EnsurePreview();
    if (Osp::Failed(r)) return r;
    const CameraType type = setting_->GetCameraType();
    const bool isNextOfSeries =
        (type == CameraType::kAction || type == CameraType::kQuad) && shotCounter_ > 0;
    if (isNextOfSeries) return camera_->Capture();
    if (Effects::FramesPerPhotograph(type) > 1) overlay_->SetCaptureButton(shotCounter_);
    return Osp::Succeeded(camera_->StartAutoFocus()) ? result::kSuccess : camera_->Capture();
}

void MainForm::OnCameraAutoFocused(bool) {
    (void)camera_->Capture();
    focusGuard_ = true;
    (void)timer_->Start(kPictureTimeoutMs);
}

void MainForm::OnTimerExpired(Osp::Base::Runtime::Timer&) {
    if (focusGuard_) {
        RestartAfterSilence();
    } else {
        BeginFrame();
    }
}

void MainForm::RestartAfterSilence() {
    focusGuard_ = false;
    (void)Stop();
    if (!StartOrEnd(false)) return;
    // The zoom survives a power cycle only after a picture, which did not come.
    RestoreZoom();
    PreCapture();
}

void MainForm::OnCameraCaptured(ByteBuffer& capturedData, result r) {
    if (focusGuard_) {
        focusGuard_ = false;
        (void)timer_->Cancel();
    }
    PlayShutterSound();
    (void)Stop();
    TakeFrame(Osp::Succeeded(r) ? Decode(capturedData) : nullptr);
    (void)StartOrEnd(false);
    FollowUp(kActionDelayMs, kQuadDelayMs);
}

std::unique_ptr<ByteBuffer> MainForm::Decode(const ByteBuffer& picture) {
    const std::unique_ptr<Osp::Graphics::Bitmap> bitmap(image_->DecodeN(
        picture, Osp::Media::ImageFormat::kJpeg, Osp::Graphics::BitmapPixelFormat::kArgb8888));
    if (!bitmap) return nullptr;
    const std::unique_ptr<ByteBuffer> bmp(
        image_->EncodeToBufferN(*bitmap, Osp::Media::ImageFormat::kBmp));
    const auto [width, height] = setting_->GetCaptureDimension();
    const int size = width * height * Effects::kBytesPerPixel;
    // A picture of another size than was asked for is no frame of this photograph.
    if (!bmp || bmp->GetCapacity() != kBmpHeaderBytes + size) return nullptr;

    auto frame = std::make_unique<ByteBuffer>();
    if (Osp::Failed(frame->Construct(size))) return nullptr;
    Effects::FromBmpRows(bmp->GetPointer() + kBmpHeaderBytes, View(*frame));
    return frame;
}

// Null for a frame that did not come. Whatever happens to it, the camera goes on afterwards.
void MainForm::TakeFrame(const std::unique_ptr<ByteBuffer>& frame) {
    if (!frame) return LoseFrame();
    try {
        CacheOrStore(*frame);
    } catch (const std::bad_alloc&) {
        LoseFrame();
    }
}

void MainForm::CacheOrStore(ByteBuffer& frame) {
    lostFrames_ = 0;
    if (!Effects::IsLastFrame(setting_->GetCameraType(), shotCounter_)) {
        (void)SaveToCache(frame);
        return;
    }
    overlay_->ShowProcessing();
    (void)SaveToFile(&frame, true, false);
    if (setting_->IsHdrEnabled()) (void)SaveToFile(&frame, true, true);
    EndSeries();
    overlay_->ShowScreen();
}

void MainForm::PlayShutterSound() {
    if (!setting_->IsShutterSoundEnabled()) return;
    const auto type = static_cast<std::size_t>(setting_->GetCameraType());
    constexpr std::size_t kOthers = 2;
    auto& player = players_[type < kOthers ? type : kOthers];
    if (!player) return;
    StopIfActive(*player);
    (void)player->Play();
}

}  // namespace Kivo
