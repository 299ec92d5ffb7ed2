#include "backends/sound/clip_decoder.h"

#include <gst/app/gstappsink.h>
#include <gst/gst.h>

#include "osp/base/owner.h"

namespace Osp::Media {

namespace {

constexpr std::size_t kMostFrames = std::size_t{30} * kSoundRate;
constexpr unsigned kMostQueuedBuffers = 64;
constexpr GstClockTime kPatience = 20 * GST_MSECOND;
constexpr GstClockTime kLongestPause = 2 * GST_SECOND;

using ElementOwner = Base::Owner<GstElement, gst_object_unref>;

/// A pipeline that ends with the object, whatever it was doing.
class Pipeline {
  public:
    Pipeline()
        : bin_(gst_parse_launch("filesrc name=source ! decodebin ! audioconvert ! audioresample ! "
                                "appsink name=sink sync=false",
                                nullptr)) {}
    ~Pipeline() {
        if (bin_) gst_element_set_state(bin_.get(), GST_STATE_NULL);
    }
    Pipeline(const Pipeline&) = delete;
    Pipeline& operator=(const Pipeline&) = delete;

    /// Null where the elements are not installed.
    GstElement* Get() const { return bin_.get(); }
    ElementOwner Element(const char* name) const {
        return ElementOwner(gst_bin_get_by_name(GST_BIN(bin_.get()), name));
    }

  private:
    ElementOwner bin_;
};

void SetFormat(GstAppSink* sink) {
    GstCaps* const caps = gst_caps_new_simple(
        "audio/x-raw", "format", G_TYPE_STRING, "F32LE", "layout", G_TYPE_STRING, "interleaved",
        "rate", G_TYPE_INT, kSoundRate, "channels", G_TYPE_INT, kSoundChannels, nullptr);
    gst_app_sink_set_caps(sink, caps);
    gst_caps_unref(caps);
    gst_app_sink_set_max_buffers(sink, kMostQueuedBuffers);
}

void Append(GstSample* sample, SoundClip& clip) {
    GstMapInfo map;
    GstBuffer* const buffer = gst_sample_get_buffer(sample);
    if (!gst_buffer_map(buffer, &map, GST_MAP_READ)) return;
    const auto* const samples = reinterpret_cast<const float*>(map.data);
    clip.samples.insert(clip.samples.end(), samples, samples + map.size / sizeof(float));
    gst_buffer_unmap(buffer, &map);
}

bool HasFailed(const Pipeline& pipeline) {
    const Base::Owner<GstBus, gst_object_unref> bus(gst_element_get_bus(pipeline.Get()));
    const Base::Owner<GstMessage, gst_message_unref> error(
        gst_bus_pop_filtered(bus.get(), GST_MESSAGE_ERROR));
    return error != nullptr;
}

void Collect(const Pipeline& pipeline, GstAppSink* sink, SoundClip& clip) {
    GstClockTime pause = 0;
    while (clip.Frames() < kMostFrames && pause < kLongestPause) {
        const Base::Owner<GstSample, gst_sample_unref> sample(
            gst_app_sink_try_pull_sample(sink, kPatience));
        if (sample) {
            Append(sample.get(), clip);
            pause = 0;
        } else if (gst_app_sink_is_eos(sink) || HasFailed(pipeline)) {
            return;
        } else {
            pause += kPatience;
        }
    }
}

}  // namespace

SoundClip DecodeClip(const std::string& realPath) {
    SoundClip clip;
    const Pipeline pipeline;
    if (pipeline.Get() == nullptr) return clip;
    const auto sink = pipeline.Element("sink");
    SetFormat(GST_APP_SINK(sink.get()));
    g_object_set(pipeline.Element("source").get(), "location", realPath.c_str(), nullptr);
    gst_element_set_state(pipeline.Get(), GST_STATE_PLAYING);
    Collect(pipeline, GST_APP_SINK(sink.get()), clip);
    TrimLeadingSilence(clip);
    return clip;
}

}  // namespace Osp::Media
