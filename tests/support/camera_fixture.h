// What the tests of cameras share.
#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <osp/media/i_camera_event_listener.h>

#include "tests/support/test_loop.h"

namespace Osp::Media {

using Notes = std::vector<std::string>;

/// Notes what it hears, one text an event, and keeps the last pictures.
class NotingListener : public ICameraEventListener {
  public:
    explicit NotingListener(Testing::TestLoop& loop) : loop_(loop) {}

    void OnCameraAutoFocused(bool completeCondition) override {
        Note(completeCondition ? "sharp" : "blurred");
    }
    void OnCameraCaptured(Base::ByteBuffer& capturedData, result r) override {
        Note("captured" + Code(r));
        // After the listener's own doings: the buffer outlives them.
        still.assign(capturedData.Bytes().begin(), capturedData.Bytes().end());
    }
    void OnCameraPreviewed(Base::ByteBuffer& previewedData, result r) override {
        frameTimesUs.push_back(loop_.Clock().Now().count());
        Note("frame" + Code(r));
        frame.assign(previewedData.Bytes().begin(), previewedData.Bytes().end());
    }
    void OnCameraErrorOccurred(CameraErrorReason reason) override {
        Note(reason == CameraErrorReason::kDisconnected ? "disconnected" : "device failure");
    }

    /// What was noted since the last call.
    Notes TakeNotes() { return std::exchange(notes_, {}); }
    /// The same without the frames.
    Notes TakeAnswers() {
        Notes notes = TakeNotes();
        std::erase(notes, "frame");
        return notes;
    }

    std::string frame;                    // the last one's bytes
    std::string still;                    // the last one's
    std::vector<long long> frameTimesUs;  // of all
    std::function<void()> then = [] {};   // called in every event

  private:
    void Note(const std::string& text) {
        notes_.push_back(text);
        then();
    }
    static std::string Code(result r) {
        if (r == result::kSuccess) return "";
        const std::map<result, std::string> codes = {{result::kIo, ": io"},
                                                     {result::kInvalidFormat, ": format"}};
        return codes.contains(r) ? codes.at(r) : ": failure";
    }

    Testing::TestLoop& loop_;
    Notes notes_;
};

inline Base::ByteBuffer SomeBytes(const std::string& content) {
    Base::ByteBuffer buffer;
    (void)buffer.Construct(static_cast<int>(content.size()));
    std::ranges::copy(content, buffer.GetPointer());
    return buffer;
}

}  // namespace Osp::Media
