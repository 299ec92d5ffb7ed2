#include "backends/gstreamer/video_pipeline.h"

#include <algorithm>
#include <cassert>
#include <cctype>
#include <gst/video/video.h>
#include <string>
#include <utility>

// `source ! caps ! appsink` and nothing else: converters, queues and tees each bring hangs of their
// own when a device goes away. The caps stand in the appsink. No main loop runs here: the bus is
// read by a handler on the thread that posts, the element's own, and pictures are converted on the
// streaming thread, because their memory goes back to the device afterwards.
//
// The device's answer is the caps event at the sink: it comes after the driver has accepted format
// and size, which is where drivers and libraries say that another program has the device. Waiting
// for the first picture would cost the length of an exposure more, and a device without light
// takes half a second for that.
//
// Whoever delivers holds mutex_, so that Silence waits for a delivery under way. End does not hold
// it: it waits for the streaming thread, which may be about to take it.

namespace Osp::Media {

namespace {

result WhatErrorMeans(GstMessage* message) {
    GError* error = nullptr;
    gchar* details = nullptr;
    gst_message_parse_error(message, &error, &details);
    const bool isBusy = g_error_matches(error, GST_RESOURCE_ERROR, GST_RESOURCE_ERROR_BUSY) != 0;
    const bool isGone =
        g_error_matches(error, GST_RESOURCE_ERROR, GST_RESOURCE_ERROR_NOT_FOUND) != 0;
    std::string text = std::string(error->message) + (details == nullptr ? "" : details);
    g_error_free(error);
    g_free(details);
    // A device that is refused at its opening is told as the system's words alone.
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return std::tolower(c); });
    if (isBusy || text.find("resource busy") != std::string::npos) return result::kDeviceBusy;
    return isGone ? result::kObjectNotFound : result::kIo;
}

std::optional<VideoFormat> FormatOf(const GstVideoInfo& info) {
    switch (GST_VIDEO_INFO_FORMAT(&info)) {
        case GST_VIDEO_FORMAT_I420:
            return VideoFormat::kI420;
        case GST_VIDEO_FORMAT_NV12:
            return VideoFormat::kNv12;
        case GST_VIDEO_FORMAT_YUY2:
            return VideoFormat::kYuy2;
        default:
            return std::nullopt;
    }
}

bool DeliverRaw(GstBuffer* buffer, const GstCaps* caps, VideoSink& sink) {
    GstVideoInfo info;
    GstVideoFrame frame;
    if (!gst_video_info_from_caps(&info, caps)) return false;
    const auto format = FormatOf(info);
    if (!format || !gst_video_frame_map(&frame, &info, buffer, GST_MAP_READ)) return false;
    VideoPicture picture{*format, {info.width, info.height}, {}, {}};
    for (unsigned i = 0; i < GST_VIDEO_FRAME_N_PLANES(&frame); ++i) {
        picture.planes[i] = {
            static_cast<const std::uint8_t*>(GST_VIDEO_FRAME_PLANE_DATA(&frame, i)),
            GST_VIDEO_FRAME_PLANE_STRIDE(&frame, i)};
    }
    sink.OnPicture(picture);
    gst_video_frame_unmap(&frame);
    return true;
}

bool DeliverJpeg(GstBuffer* buffer, const GstStructure* structure, VideoSink& sink) {
    VideoPicture picture{VideoFormat::kMjpeg, {}, {}, {}};
    GstMapInfo map;
    if (!gst_structure_get_int(structure, "width", &picture.size.width) ||
        !gst_structure_get_int(structure, "height", &picture.size.height) ||
        !gst_buffer_map(buffer, &map, GST_MAP_READ)) {
        return false;
    }
    picture.mjpeg = {map.data, map.size};
    if (map.size > 0) sink.OnPicture(picture);
    gst_buffer_unmap(buffer, &map);
    return map.size > 0;
}

/// False, with nothing delivered, for what is no picture.
bool Deliver(GstSample& sample, VideoSink& sink) {
    GstBuffer* const buffer = gst_sample_get_buffer(&sample);
    const GstCaps* const caps = gst_sample_get_caps(&sample);
    if (buffer == nullptr || caps == nullptr) return false;
    if (GST_BUFFER_FLAG_IS_SET(buffer, GST_BUFFER_FLAG_CORRUPTED)) return false;
    const GstStructure* const structure = gst_caps_get_structure(caps, 0);
    return gst_structure_has_name(structure, "image/jpeg") ? DeliverJpeg(buffer, structure, sink)
                                                           : DeliverRaw(buffer, caps, sink);
}

}  // namespace

void VideoPipeline::Begin(GstOwner<GstElement> source, CapsOwner caps) {
    assert(!pipeline_);
    {
        const std::lock_guard lock(mutex_);
        if (!sink_) return;
    }
    if (!source || !caps || !Build(source.get(), caps.get()) ||
        gst_element_set_state(pipeline_.get(), GST_STATE_PLAYING) == GST_STATE_CHANGE_FAILURE) {
        OnEnd(result::kIo);  // unless the element has told more
    }
}

bool VideoPipeline::Build(GstElement* source, GstCaps* caps) {
    const auto sink = Own(gst_element_factory_make("appsink", nullptr));
    if (!sink) return false;
    pipeline_ = Own(gst_pipeline_new(nullptr));
    const GstOwner<GstBus> bus(gst_element_get_bus(pipeline_.get()));
    gst_bus_set_sync_handler(bus.get(), &OnMessage, this, nullptr);
    // A sample that is kept would be one that the device lacks.
    g_object_set(sink.get(), "caps", caps, "max-buffers", 2, "drop", TRUE, "sync", FALSE,
                 "enable-last-sample", FALSE, nullptr);
    GstAppSinkCallbacks callbacks{};
    callbacks.new_sample = &OnNewSample;
    gst_app_sink_set_callbacks(GST_APP_SINK(sink.get()), &callbacks, this, nullptr);
    const GstOwner<GstPad> pad(gst_element_get_static_pad(sink.get(), "sink"));
    gst_pad_add_probe(pad.get(),
                      static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM |
                                                   GST_PAD_PROBE_TYPE_QUERY_DOWNSTREAM),
                      &OnPad, this, nullptr);
    return gst_bin_add(GST_BIN(pipeline_.get()), source) != 0 &&
           gst_bin_add(GST_BIN(pipeline_.get()), sink.get()) != 0 &&
           gst_element_link(source, sink.get()) != 0;
}

void VideoPipeline::End() {
    if (!pipeline_) return;
    gst_element_set_state(pipeline_.get(), GST_STATE_NULL);
    pipeline_.reset();
}

result VideoPipeline::AwaitAnswer(std::chrono::steady_clock::time_point limit) {
    std::unique_lock lock(mutex_);
    if (!answered_.wait_until(lock, limit, [this] { return answer_.has_value(); })) {
        answer_ = result::kSuccess;
    }
    return *answer_;
}

void VideoPipeline::Silence() {
    const std::lock_guard lock(mutex_);
    sink_.reset();
}

void VideoPipeline::Answer(result r) {
    const std::lock_guard lock(mutex_);
    if (!answer_) answer_ = r;
    answered_.notify_all();
}

// Before the device's answer an end is the answer.
void VideoPipeline::OnEnd(result why) {
    const std::lock_guard lock(mutex_);
    const bool hasBegun = answer_ && Succeeded(*answer_);
    if (!answer_) answer_ = why;
    answered_.notify_all();
    if (hasBegun && sink_) sink_->OnEnded();
    sink_.reset();
}

void VideoPipeline::OnSample(GstSample& sample) {
    const std::lock_guard lock(mutex_);
    if (sink_ && !Deliver(sample, *sink_)) sink_->OnDamage();
}

GstFlowReturn VideoPipeline::OnNewSample(GstAppSink* appSink, gpointer pipeline) {
    const SampleOwner sample(gst_app_sink_try_pull_sample(appSink, 0));
    if (sample) static_cast<VideoPipeline*>(pipeline)->OnSample(*sample);
    return GST_FLOW_OK;
}

GstBusSyncReply VideoPipeline::OnMessage(GstBus*, GstMessage* message, gpointer pipeline) {
    auto& self = *static_cast<VideoPipeline*>(pipeline);
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR) self.OnEnd(WhatErrorMeans(message));
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_EOS) self.OnEnd(result::kIo);
    gst_message_unref(message);
    return GST_BUS_DROP;
}

GstPadProbeReturn VideoPipeline::OnPad(GstPad*, GstPadProbeInfo* info, gpointer pipeline) {
    if ((info->type & GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM) != 0) {
        if (GST_EVENT_TYPE(gst_pad_probe_info_get_event(info)) == GST_EVENT_CAPS) {
            static_cast<VideoPipeline*>(pipeline)->Answer(result::kSuccess);
        }
        return GST_PAD_PROBE_OK;
    }
    GstQuery* const query = gst_pad_probe_info_get_query(info);
    if (GST_QUERY_TYPE(query) != GST_QUERY_ALLOCATION) return GST_PAD_PROBE_OK;
    // We take rows with gaps between them; a source that is not told copies every picture.
    gst_query_add_allocation_meta(query, GST_VIDEO_META_API_TYPE, nullptr);
    return GST_PAD_PROBE_HANDLED;
}

}  // namespace Osp::Media
