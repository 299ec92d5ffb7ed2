// A camera without hardware: makes its pictures itself, at the pace of one that has some.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>

#include <osp/media/camera_selection.h>

#include "osp/base/clock.h"
#include "osp/base/event_loop.h"
#include "osp/media/camera/camera_device.h"

namespace Osp::Media {

constexpr int kFramesASecond = 30;

/// Frame k of a stream is due k/30 s after its start. Frames are made one at a time on a worker.
/// One that is still being made when the next is due makes that one drop out; a virtual clock waits
/// for it instead. What is shown at a moment depends on that moment alone, not on the stream.
class GeneratedCamera : public CameraDevice {
  public:
    GeneratedCamera(std::string id, CameraSelection selection);
    ~GeneratedCamera() override { GeneratedCamera::Stop(); }

    const std::string& Id() const override { return id_; }
    std::span<const Graphics::Dimension> PreviewSizes() const override;
    result Open(CameraDeviceClient& client) override;
    void Close() override { client_ = nullptr; }
    result Start(const StreamSettings& settings) override;
    void Change(const StreamSettings& settings) override;
    void Stop() override;
    result StartAutoFocus() override { return result::kUnsupported; }
    result RequestStill() override;
    bool HasWhiteBalance() const override { return true; }
    result SwitchFlashOn() override { return result::kUnsupported; }
    void SwitchFlashOff() override {}

  protected:
    /// Run on a worker, also after the device is gone: they hold on to all they need.
    using FrameJob = std::function<void(Base::ByteBuffer& i420)>;
    using PrepareJob = std::function<void()>;
    struct StillJob {
        std::function<result(Base::ByteBuffer& jpeg)> work;
        std::function<void()> delivered;  // on the loop, before the application gets the still
    };

    /// What the camera sees at frame `number` of its own time, which counts from the clock's start.
    virtual FrameJob MakeFrameJob(const StreamSettings& settings, long long number) = 0;
    virtual StillJob MakeStillJob(const StreamSettings& settings, long long number) = 0;
    /// What makes the first still as fast as the later ones, run once the preview is there and
    /// after every change of settings; may be empty.
    virtual PrepareJob MakePrepareJob(const StreamSettings& settings);

    CameraSelection Selection() const { return selection_; }
    CameraDeviceClient* Client() { return client_; }

    /// Runs `task` on the loop after `delay` unless the stream ends before.
    void InStream(Base::Duration delay, std::function<void()> task);

  private:
    struct Stream;

    void OnTick(const std::shared_ptr<Stream>& stream);
    void MakeFrame(const std::shared_ptr<Stream>& stream);
    void PrepareStill(const std::shared_ptr<Stream>& stream);
    long long FrameNumberNow() const;

    std::string id_;
    CameraSelection selection_;
    CameraDeviceClient* client_ = nullptr;  // not owned; null while closed
    StreamSettings settings_;
    std::shared_ptr<Stream> stream_;  // null while stopped; tasks of an ended stream do nothing
};

}  // namespace Osp::Media
