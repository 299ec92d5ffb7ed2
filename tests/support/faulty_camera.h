// A camera that breaks its word.
#pragma once

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <utility>

#include "osp/base/event_loop.h"
#include "osp/media/camera/camera_device.h"
#include "tests/support/camera_fixture.h"

namespace Kivo::Testing {

enum class Fault {
    kNone,
    kBusy,       // another program has it
    kUnfocused,  // focusing cannot start
    kRefuses,    // refuses to take a still
    kSilent,     // never delivers one
    kRubbish,    // delivers something else
    kTruncated,  // delivers half of one
    kTwice,      // delivers it twice
    kLate,       // delivers it when nobody waits any more
    kDies,       // its stream ends instead of the next frame
};

/// Stands before a good device. Loop thread only.
class FaultyCamera : public Osp::Media::CameraDevice, private Osp::Media::CameraDeviceClient {
  public:
    FaultyCamera(std::unique_ptr<CameraDevice> device, const Fault& fault)
        : device_(std::move(device)), fault_(fault) {}

    const std::string& Id() const override { return device_->Id(); }
    std::span<const Osp::Graphics::Dimension> PreviewSizes() const override {
        return device_->PreviewSizes();
    }
    result Open(CameraDeviceClient& client) override {
        client_ = &client;
        return fault_ == Fault::kBusy ? result::kDeviceBusy : device_->Open(*this);
    }
    void Close() override { device_->Close(); }
    result Start(const Osp::Media::StreamSettings& settings) override {
        zoomStep_ = settings.zoomStep;
        return device_->Start(settings);
    }
    void Change(const Osp::Media::StreamSettings& settings) override {
        zoomStep_ = settings.zoomStep;
        device_->Change(settings);
    }
    int ZoomStep() const { return zoomStep_; }
    void Stop() override { device_->Stop(); }
    result StartAutoFocus() override {
        return fault_ == Fault::kUnfocused ? result::kUnsupported : device_->StartAutoFocus();
    }
    result RequestStill() override {
        return fault_ == Fault::kRefuses ? result::kInvalidState : device_->RequestStill();
    }
    bool HasWhiteBalance() const override { return device_->HasWhiteBalance(); }
    result SwitchFlashOn() override { return device_->SwitchFlashOn(); }
    void SwitchFlashOff() override { device_->SwitchFlashOff(); }

  private:
    using ByteBuffer = Osp::Base::ByteBuffer;

    bool WantsFrame() const override { return client_->WantsFrame(); }
    void OnFrame(ByteBuffer frame) override {
        if (fault_ != Fault::kDies) return client_->OnFrame(std::move(frame));
        // No delivery calls the device.
        Osp::Base::EventLoop::Current().Post(Osp::Base::EventClass::kSystem, [this] {
            device_->Stop();
            client_->OnFailed(result::kIo);
        });
    }
    void OnFocused(bool isSharp) override { client_->OnFocused(isSharp); }
    void OnFailed(result r) override { client_->OnFailed(r); }
    void OnStill(ByteBuffer jpeg, result r) override {
        if (fault_ == Fault::kSilent) return;
        if (fault_ == Fault::kLate) return DeliverLate(std::move(jpeg), r);
        const std::string bytes(jpeg.Bytes().begin(), jpeg.Bytes().end());
        if (fault_ == Fault::kTwice) client_->OnStill(Osp::Media::SomeBytes(bytes), r);
        if (fault_ == Fault::kTruncated) {
            jpeg = Osp::Media::SomeBytes(bytes.substr(0, bytes.size() / 2));
        }
        if (fault_ == Fault::kRubbish) std::ranges::fill(jpeg.Bytes(), 'x');
        client_->OnStill(std::move(jpeg), r);
    }

    void DeliverLate(ByteBuffer jpeg, result r) {
        Osp::Base::EventLoop::Current().StartTimer(
            Osp::Base::EventClass::kSystem, std::chrono::seconds(4),
            [this, r, late = std::make_shared<ByteBuffer>(std::move(jpeg))] {
                client_->OnStill(std::move(*late), r);
            });
    }

    std::unique_ptr<CameraDevice> device_;
    const Fault& fault_;                    // the test's
    CameraDeviceClient* client_ = nullptr;  // not owned; while open
    int zoomStep_ = 0;                      // of the running stream
};

}  // namespace Kivo::Testing
