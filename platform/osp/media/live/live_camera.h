// A real camera: what every source of video needs to be one of the phone's.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <osp/media/camera_selection.h>

#include "osp/base/event_loop.h"
#include "osp/base/event_source.h"
#include "osp/media/camera/camera_device.h"
#include "osp/media/live/picture_intake.h"
#include "osp/media/live/video_source.h"

namespace Osp::Media {

/// The device streams longer than the application looks: it stays configured for some seconds after
/// Stop, so that powering off and on for a photograph negotiates nothing. A stream that brings no
/// whole picture for two seconds, or ends, makes the camera one that is not there; it is tried
/// again until it delivers. Loop thread only.
class LiveCamera : public CameraDevice {
  public:
    LiveCamera(std::string id, CameraSelection selection, std::unique_ptr<VideoSource> source);
    ~LiveCamera() override;

    const std::string& Id() const override { return id_; }
    std::span<const Graphics::Dimension> PreviewSizes() const override;
    result Open(CameraDeviceClient& client) override;
    void Close() override;
    result Start(const StreamSettings& settings) override;
    void Change(const StreamSettings& settings) override;
    void Stop() override;
    result StartAutoFocus() override;
    result RequestStill() override;
    bool HasWhiteBalance() const override { return true; }
    result SwitchFlashOn() override { return source_->Set(VideoControl::kFlash, 1); }
    void SwitchFlashOff() override;

    bool IsPresent() const override { return isPresent_; }
    void WatchPresence(std::function<void(bool)> changed) override;
    void Seek(const StreamSettings& settings) override;
    void StopSeeking() override;
    void SetLingers(bool lingers) override;

  private:
    result StartSource();
    void StopSource();
    PictureIntake::Handlers MakeHandlers();
    StreamSettings LeftToPictures() const;
    void SetControls();
    void WatchPictures();
    void LookAgain();
    void OnSourceChanged();
    void OnFirstPicture();
    void Lose();
    void Return();
    void Try();
    void TryLater();
    void Cancel(Base::EventLoop::TimerId& timer);

    const std::string id_;
    const CameraSelection selection_;
    const std::unique_ptr<VideoSource> source_;
    std::function<void(bool)> presenceChanged_;
    CameraDeviceClient* client_ = nullptr;  // not owned; null while closed
    StreamSettings settings_;
    VideoMode mode_;                         // of the source's stream
    std::shared_ptr<PictureIntake> intake_;  // exactly while the source streams
    bool isRunning_ = false;                 // between Start and Stop
    bool isPresent_ = false;
    bool isSought_ = false;
    bool lingers_ = true;
    unsigned seenPictures_ = 0;
    int silentLooks_ = 0;  // at the same number of pictures
    Base::EventLoop::TimerId lingerTimer_ = 0;
    Base::EventLoop::TimerId watchTimer_ = 0;
    Base::EventLoop::TimerId tryTimer_ = 0;
    Base::EventSource changes_{Base::EventClass::kSystem};  // of the source's being there
    Base::EventSource stream_{Base::EventClass::kSystem};   // of the source's stream
    Base::EventSource frames_{Base::EventClass::kSystem};   // between Start and Stop
};

}  // namespace Osp::Media
