#include <osp/media/camera.h>

#include "osp/media/camera/camera_service.h"
#include "osp/media/camera/camera_session.h"

namespace Osp::Media {

namespace {

std::vector<Graphics::Dimension>* NewList(std::span<const Graphics::Dimension> sizes) {
    return new std::vector<Graphics::Dimension>(sizes.begin(), sizes.end());
}

}  // namespace

Camera::Camera() = default;
Camera::~Camera() = default;

result Camera::Construct(ICameraEventListener& listener, CameraSelection selection) {
    if (session_ != nullptr) return result::kInvalidState;
    CameraSlot& slot = CameraService::Current().Slot(selection);
    if (!slot.Exists()) return result::kObjectNotFound;
    session_ = std::make_unique<CameraSession>(listener, slot);
    return result::kSuccess;
}

result Camera::PowerOn() {
    return session_ ? session_->PowerOn() : result::kInvalidState;
}

result Camera::PowerOff() {
    return session_ ? session_->PowerOff() : result::kInvalidState;
}

bool Camera::IsPoweredOn() const {
    return session_ && session_->State() != SessionState::kOff;
}

CameraState Camera::GetState() const {
    return session_ && IsPreviewing(session_->State()) ? CameraState::kPreviewing
                                                       : CameraState::kInitial;
}

bool Camera::IsConnected() const {
    return session_ && session_->IsConnected();
}

std::vector<Graphics::Dimension>* Camera::GetSupportedPreviewResolutionListN() const {
    return session_ ? NewList(session_->PreviewSizes()) : nullptr;
}

std::vector<Graphics::Dimension>* Camera::GetSupportedCaptureResolutionListN() const {
    return session_ ? NewList(CameraSession::CaptureSizes()) : nullptr;
}

result Camera::SetPreviewResolution(const Graphics::Dimension& resolution) {
    return session_ ? session_->SetPreviewSize(resolution) : result::kInvalidState;
}

Graphics::Dimension Camera::GetPreviewResolution() const {
    return session_ ? session_->Settings().previewSize : Graphics::Dimension{};
}

// The first chroma plane of a preview frame is Cb, the second Cr.  The application reads them the
// other way round; with this order its front-camera photographs get their natural colours.
result Camera::SetPreviewFormat(PixelFormat format) {
    if (!session_ || session_->State() != SessionState::kOn) return result::kInvalidState;
    return format == PixelFormat::kYuv420Planar ? result::kSuccess : result::kUnsupported;
}

result Camera::SetCaptureResolution(const Graphics::Dimension& resolution) {
    return session_ ? session_->SetCaptureSize(resolution) : result::kInvalidState;
}

result Camera::SetCaptureFormat(PixelFormat format) {
    if (!session_ || session_->State() != SessionState::kOn) return result::kInvalidState;
    return format == PixelFormat::kJpeg ? result::kSuccess : result::kUnsupported;
}

result Camera::StartPreview(Base::ByteBuffer* buffer, bool callbacks) {
    if (buffer != nullptr) return result::kUnsupported;
    return session_ ? session_->StartPreview(callbacks) : result::kInvalidState;
}

result Camera::StopPreview() {
    return session_ ? session_->StopPreview() : result::kInvalidState;
}

result Camera::StartAutoFocus() {
    return session_ ? session_->StartAutoFocus() : result::kInvalidState;
}

result Camera::Capture() {
    return session_ ? session_->Capture() : result::kInvalidState;
}

result Camera::ZoomIn() {
    return session_ ? session_->Zoom(1) : result::kInvalidState;
}

result Camera::ZoomOut() {
    return session_ ? session_->Zoom(-1) : result::kInvalidState;
}

result Camera::SetFlash(bool on) {
    return session_ ? session_->SetFlash(on) : result::kInvalidState;
}

result Camera::SetWhiteBalance(CameraWhiteBalance whiteBalance) {
    return session_ ? session_->SetWhiteBalance(whiteBalance) : result::kInvalidState;
}

CameraWhiteBalance Camera::GetWhiteBalance() const {
    return session_ ? session_->Settings().whiteBalance : CameraWhiteBalance::kAuto;
}

}  // namespace Osp::Media
