// Where a device's pictures come in, on the device's thread, and what is wanted of them.
#pragma once

#include <atomic>
#include <functional>
#include <mutex>

#include <osp/base/byte_buffer.h>

#include "osp/base/event_loop.h"
#include "osp/media/live/picture_converter.h"
#include "osp/media/live/video_source.h"

namespace Osp::Media {

/// Lives as long as the device streams, which is longer than the application's stream. Makes
/// frames only while they are wanted; what nobody wants costs nothing. The methods of VideoSink on
/// the device's thread, the others on the loop thread.
class PictureIntake : public VideoSink {
  public:
    /// What is told, on the loop.
    struct Handlers {
        std::function<void(Base::ByteBuffer frame)> onFrame;
        std::function<void(Base::ByteBuffer jpeg)> onStill;
        std::function<void()> onFirstPicture;
        std::function<void()> onEnded;
    };
    using Poster = std::function<void(Base::EventLoop::Task)>;

    /// `streamPoster` takes what concerns the whole stream, until it is dropped.
    PictureIntake(CameraSelection selection, Handlers handlers, Poster streamPoster)
        : handlers_(std::move(handlers)),
          postToStream_(std::move(streamPoster)),
          converter_(selection) {}

    /// From now on frames are made, and posted to `poster`.
    void Begin(const StreamSettings& settings, Poster poster);
    void Change(const StreamSettings& settings);
    /// The next whole picture becomes a still.
    void RequestStill();
    /// Nothing more is made. What was posted to Begin's poster is the caller's to drop.
    void End();

    /// How many whole pictures have come. Any thread.
    unsigned PictureCount() const { return pictureCount_; }

    void OnPicture(const VideoPicture& picture) override;
    void OnDamage() override {}
    void OnEnded() override;

  private:
    // What is wanted of the next picture.
    struct Order {
        bool wantsFrames = false;
        bool wantsStill = false;
        StreamSettings settings;
        Poster post;
        std::shared_ptr<std::atomic<int>> waitingFrames;  // posted and not yet delivered
    };

    bool Serve(const VideoPicture& picture, Order& order);
    bool ServeStill(const VideoPicture& picture, const Order& order);
    bool ServeFrame(const VideoPicture& picture, const Order& order);

    const Handlers handlers_;
    const Poster postToStream_;
    std::atomic<unsigned> pictureCount_ = 0;
    std::mutex mutex_;  // guards order_
    Order order_;
    PictureConverter converter_;  // the device's thread only
};

}  // namespace Osp::Media
