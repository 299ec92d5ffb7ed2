#include <cstddef>

#include "action_ids.h"
#include "composition.h"
#include "main_form.h"
#include "overlay.h"

namespace Kivo {

using Osp::Base::ByteBuffer;
using Osp::Media::CameraState;

namespace {

constexpr int kPictureTimeoutMs = 3000;
constexpr int kActionDelayMs = 100;
constexpr int kQuadDelayMs = 600;
constexpr int kBmpHeaderBytes = 54;
constexpr int kBytesPerPixel = 3;

// What a running capture takes away from the user.
constexpr int kCaptureControls[] = {
    kActionCapture, kActionCameraSelection, kActionFlash, kActionWhiteBalance,
    kActionHdr,     kActionCameraType,      kActionAlbum, kActionSettings};

}  // namespace

void MainForm::EnableControls(bool enable) {
    for (const int id : kCaptureControls) (void)overlay_->SetButtonEnabled(id, enable);
    overlay_->EnableKeys(enable);
}

bool MainForm::IsCapturing() const {
    return !overlay_->IsButtonEnabled(kActionCapture);
}

void MainForm::OnKeyPressed(const Osp::Ui::Control&, Osp::Ui::KeyCode keyCode) {
    if (keyCode != Osp::Ui::KeyCode::kCamera) return;
    // The key is the shutter button: what disables the one disables the other.
    if (!IsCapturing() && isFirstFrameShown_) PreCapture();
}

void MainForm::PreCapture() {
    overlay_->SetFocused(true);
    EnableControls(false);
    PrepareTables();
    if (IsPrimary()) {
        if (Osp::Failed(StartCapture())) EnableControls(true);
    } else {
        CaptureFromPreview();
    }
}

void MainForm::CaptureFromPreview() {
    frontCountdown_ = 0;
    if (setting_->GetFlashState() == FlashState::kOn) overlay_->FlashEffect();
}

result MainForm::StartCapture() {
    if (!camera_) return result::kInvalidState;
    if (camera_->GetState() != CameraState::kPreviewing) {
        (void)camera_->PowerOff();
        // A power cycle alone would leave a camera without a preview, which cannot capture.
        const result r = Start(true);
        if (Osp::Failed(r)) return r;
    }
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
        focusGuard_ = false;
        (void)Stop();
        RestartOrEnd();
        PreCapture();
    } else if (IsPrimary()) {
        if (Osp::Failed(StartCapture())) EnableControls(true);
    } else {
        CaptureFromPreview();
    }
}

void MainForm::OnCameraCaptured(ByteBuffer& capturedData, result r) {
    if (focusGuard_) {
        focusGuard_ = false;
        (void)timer_->Cancel();
    }
    PlayShutterSound();
    (void)Stop();
    const std::unique_ptr<ByteBuffer> frame = Osp::Succeeded(r) ? Decode(capturedData) : nullptr;
    if (frame) TakeFrame(*frame);
    RestartOrEnd();
    FollowUp(kActionDelayMs, kQuadDelayMs);
}

std::unique_ptr<ByteBuffer> MainForm::Decode(const ByteBuffer& picture) {
    const std::unique_ptr<Osp::Graphics::Bitmap> bitmap(image_->DecodeN(
        picture, Osp::Media::ImageFormat::kJpeg, Osp::Graphics::BitmapPixelFormat::kArgb8888));
    if (!bitmap) return nullptr;
    const std::unique_ptr<ByteBuffer> bmp(
        image_->EncodeToBufferN(*bitmap, Osp::Media::ImageFormat::kBmp));
    const auto [width, height] = setting_->GetCaptureDimension();
    const int size = width * height * kBytesPerPixel;
    // A picture of another size than was asked for is no frame of this photograph.
    if (!bmp || bmp->GetCapacity() != kBmpHeaderBytes + size) return nullptr;

    auto frame = std::make_unique<ByteBuffer>();
    if (Osp::Failed(frame->Construct(size))) return nullptr;
    const std::ptrdiff_t stride = std::ptrdiff_t{kBytesPerPixel} * width;
    for (int y = 0; y < height; ++y) {
        const Osp::Base::byte* from = bmp->GetPointer() + kBmpHeaderBytes + stride * y;
        Osp::Base::byte* to = frame->GetPointer() + stride * (height - 1 - y);
        for (int x = 0; x < width; ++x, from += kBytesPerPixel, to += kBytesPerPixel) {
            to[0] = from[2];
            to[1] = from[1];
            to[2] = from[0];
        }
    }
    return frame;
}

void MainForm::TakeFrame(ByteBuffer& frame) {
    if (!Effects::IsLastFrame(setting_->GetCameraType(), shotCounter_)) {
        (void)SaveToCache(frame);
        return;
    }
    overlay_->ShowProcessing();
    (void)SaveToFile(&frame, true, false);
    if (setting_->IsHdrEnabled()) (void)SaveToFile(&frame, true, true);
    accumulation_.Clear();
    shotCounter_ = 0;
    overlay_->ShowScreen();
}

void MainForm::FollowUp(int actionDelayMs, int quadDelayMs) {
    const CameraType type = setting_->GetCameraType();
    const bool isInSeries = shotCounter_ >= 1 && shotCounter_ <= 3;
    if (isInSeries && (type == CameraType::kAction || type == CameraType::kQuad)) {
        overlay_->SetCaptureButton(shotCounter_);
        (void)timer_->Start(type == CameraType::kAction ? actionDelayMs : quadDelayMs);
    } else if (shotCounter_ > 0 && type == CameraType::kMix) {
        overlay_->SetCaptureButton(0);
        EnableControls(false);
        (void)overlay_->SetButtonEnabled(kActionCapture, true);
    } else {
        overlay_->SetCaptureButton(-1);
        EnableControls(true);
    }
}

void MainForm::AbandonCapture() {
    const bool waitsForSecondPress =
        setting_->GetCameraType() == CameraType::kMix && shotCounter_ > 0;
    if (timer_) (void)timer_->Cancel();
    focusGuard_ = false;
    frontCountdown_ = -1;
    if (!waitsForSecondPress) {
        shotCounter_ = 0;
        setting_->EnablePreview(false);
    }
    if (overlay_ == nullptr) return;
    overlay_->SetFocused(false);
    FollowUp(0, 0);
}

void MainForm::PlayShutterSound() {
    if (!setting_->IsShutterSoundEnabled()) return;
    const auto type = static_cast<std::size_t>(setting_->GetCameraType());
    constexpr std::size_t kOthers = 2;
    if (auto& player = players_[type < kOthers ? type : kOthers]) Play(*player);
}

void MainForm::Play(Osp::Media::Player& player) {
    const Osp::Media::PlayerState state = player.GetState();
    if (state == Osp::Media::PlayerState::kPlaying || state == Osp::Media::PlayerState::kPaused) {
        (void)player.Stop();
    }
    (void)player.Play();
}

}  // namespace Kivo
