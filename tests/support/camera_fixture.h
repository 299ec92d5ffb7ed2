// What the tests of cameras share.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <osp/media/i_camera_event_listener.h>

#include "tests/support/test_loop.h"

namespace Osp::Media {

/// Notes what it hears, one text an event, and keeps the last pictures.
class NotingListener : public ICameraEventListener {
  public:
    explicit NotingListener(Testing::TestLoop& loop) : loop_(loop) {}

    void OnCameraAutoFocused(bool completeCondition) override;
    void OnCameraCaptured(Base::ByteBuffer& capturedData, result r) override;
    void OnCameraPreviewed(Base::ByteBuffer& previewedData, result r) override;
    void OnCameraErrorOccurred(CameraErrorReason reason) override;

    /// What was noted since the last call.
    std::vector<std::string> TakeNotes();
    /// The same without the frames.
    std::vector<std::string> TakeAnswers();

    std::string frame;                      // the last one's bytes
    std::string still;                      // the last one's
    std::vector<long long> frameTimesUs;    // of all
    std::vector<long long> captureTimesUs;  // of all answers
    std::function<void()> then = [] {};     // called in every event

  private:
    void Note(const std::string& text);

    Testing::TestLoop& loop_;
    std::vector<std::string> notes_;
};

using Notes = std::vector<std::string>;

/// Three bytes that say so.
Base::ByteBuffer SomeBytes(const std::string& content);

}  // namespace Osp::Media
