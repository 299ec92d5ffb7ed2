#include "osp/media/live/picture_intake.h"

#include <memory>
#include <new>
#include <utility>

// Only whole pictures count: a device that sends rubbish is as good as one that sends nothing, and
// the watch over the count finds out. A still that meets a damaged picture waits for the next one.
// At most two frames wait for the loop, so that a loop that is held up does not fill the memory.

namespace Osp::Media {

namespace {

constexpr int kMostWaitingFrames = 2;

}  // namespace

void PictureIntake::Begin(const StreamSettings& settings, Poster poster) {
    const std::lock_guard lock(mutex_);
    order_ = {true, false, settings, std::move(poster), std::make_shared<std::atomic<int>>(0)};
}

void PictureIntake::Change(const StreamSettings& settings) {
    const std::lock_guard lock(mutex_);
    order_.settings = settings;
}

void PictureIntake::RequestStill() {
    const std::lock_guard lock(mutex_);
    order_.wantsStill = true;
}

void PictureIntake::End() {
    const std::lock_guard lock(mutex_);
    order_ = {};
}

void PictureIntake::OnPicture(const VideoPicture& picture) {
    Order order;
    {
        const std::lock_guard lock(mutex_);
        order = order_;
        order_.wantsStill = false;
    }
    bool isWhole = false;
    try {
        isWhole = Serve(picture, order);
    } catch (const std::bad_alloc&) {
        // The next picture may find memory again.
    }
    if (!isWhole && order.wantsStill) {
        const std::lock_guard lock(mutex_);
        order_.wantsStill = order_.waitingFrames == order.waitingFrames;  // the same stream still
    }
    if (isWhole && pictureCount_++ == 0) {
        postToStream_([handler = handlers_.onFirstPicture] { handler(); });
    }
}

bool PictureIntake::Serve(const VideoPicture& picture, Order& order) {
    if (order.wantsStill) return ServeStill(picture, order);
    if (!order.wantsFrames || *order.waitingFrames >= kMostWaitingFrames) return true;
    return ServeFrame(picture, order);
}

bool PictureIntake::ServeStill(const VideoPicture& picture, const Order& order) {
    const auto still = std::make_shared<Base::ByteBuffer>();
    if (!converter_.MakeStill(picture, order.settings, *still)) return false;
    order.post([still, handler = handlers_.onStill] { handler(std::move(*still)); });
    return true;
}

bool PictureIntake::ServeFrame(const VideoPicture& picture, const Order& order) {
    const auto frame = std::make_shared<Base::ByteBuffer>();
    if (!converter_.MakeFrame(picture, order.settings, *frame)) return false;
    ++*order.waitingFrames;
    order.post([frame, waiting = order.waitingFrames, handler = handlers_.onFrame] {
        --*waiting;
        handler(std::move(*frame));
    });
    return true;
}

void PictureIntake::OnEnded() {
    postToStream_([handler = handlers_.onEnded] { handler(); });
}

}  // namespace Osp::Media
