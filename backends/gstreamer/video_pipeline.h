// One stream of pictures: from a camera's element to who takes them.
#pragma once

#include <chrono>
#include <condition_variable>
#include <gst/app/gstappsink.h>
#include <gst/gst.h>
#include <memory>
#include <mutex>
#include <optional>

#include "backends/gstreamer/gst_owner.h"
#include "osp/media/live/video_source.h"

namespace Osp::Media {

/// Begins once and ends once. Begin and End may take as long as the device likes and run on one
/// thread that can wait; the others on the loop thread.
class VideoPipeline {
  public:
    explicit VideoPipeline(std::shared_ptr<VideoSink> sink) : sink_(std::move(sink)) {}
    ~VideoPipeline() { End(); }
    VideoPipeline(const VideoPipeline&) = delete;
    VideoPipeline& operator=(const VideoPipeline&) = delete;

    /// Plays `source`, which is null where the element is not installed, with these caps. Does
    /// nothing once silenced.
    void Begin(GstOwner<GstElement> source, CapsOwner caps);
    /// Closes the device.
    void End();

    /// Waits until the device has agreed to deliver or has refused, until `limit` at most. One that
    /// has not answered by then is taken at its best; it may still end.
    result AwaitAnswer(std::chrono::steady_clock::time_point limit);
    /// Nothing is delivered once this returns.
    void Silence();

  private:
    bool Build(GstElement* source, GstCaps* caps);
    void Answer(result r);
    void OnEnd(result why);
    void OnSample(GstSample& sample);
    static GstFlowReturn OnNewSample(GstAppSink* appSink, gpointer pipeline);
    static GstBusSyncReply OnMessage(GstBus* bus, GstMessage* message, gpointer pipeline);
    static GstPadProbeReturn OnPad(GstPad* pad, GstPadProbeInfo* info, gpointer pipeline);

    GstOwner<GstElement> pipeline_;  // the worker's thread

    std::mutex mutex_;  // guards what follows; held while a picture is delivered
    std::condition_variable answered_;
    std::shared_ptr<VideoSink> sink_;  // null after the end
    std::optional<result> answer_;
};

}  // namespace Osp::Media
