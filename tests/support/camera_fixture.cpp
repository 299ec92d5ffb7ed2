#include "tests/support/camera_fixture.h"

#include <algorithm>
#include <utility>

namespace Osp::Media {

namespace {

std::string Text(const Base::ByteBuffer& buffer) {
    return {buffer.Bytes().begin(), buffer.Bytes().end()};
}

std::string Code(result r) {
    switch (r) {
        case result::kSuccess:
            return "";
        case result::kIo:
            return ": io";
        case result::kObjectNotFound:
            return ": not found";
        case result::kInvalidFormat:
            return ": format";
        default:
            return ": failure";
    }
}

}  // namespace

void NotingListener::Note(const std::string& text) {
    notes_.push_back(text);
    then();
}

void NotingListener::OnCameraAutoFocused(bool completeCondition) {
    Note(completeCondition ? "sharp" : "blurred");
}

void NotingListener::OnCameraCaptured(Base::ByteBuffer& capturedData, result r) {
    captureTimesUs.push_back(loop_.Clock().Now().count());
    Note("captured" + Code(r));
    // After the listener's own doings: the buffer outlives them.
    still = Text(capturedData);
}

void NotingListener::OnCameraPreviewed(Base::ByteBuffer& previewedData, result r) {
    frameTimesUs.push_back(loop_.Clock().Now().count());
    Note("frame" + Code(r));
    frame = Text(previewedData);
}

void NotingListener::OnCameraErrorOccurred(CameraErrorReason reason) {
    Note(reason == CameraErrorReason::kDisconnected ? "disconnected" : "device failure");
}

Notes NotingListener::TakeNotes() {
    return std::exchange(notes_, {});
}

Notes NotingListener::TakeAnswers() {
    Notes notes = TakeNotes();
    std::erase(notes, "frame");
    return notes;
}

Base::ByteBuffer SomeBytes(const std::string& content) {
    Base::ByteBuffer buffer;
    (void)buffer.Construct(static_cast<int>(content.size()));
    std::ranges::copy(content, buffer.GetPointer());
    return buffer;
}

}  // namespace Osp::Media
