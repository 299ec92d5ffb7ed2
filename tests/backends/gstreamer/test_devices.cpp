#include "tests/backends/gstreamer/test_devices.h"

#include <atomic>
#include <gst/base/gstpushsrc.h>

namespace Osp::Testing {

namespace {

std::vector<TestDevice> gDevices;
GstDeviceProvider* gAnnouncer = nullptr;  // the one that was started last; not owned

constexpr const char* kElementKey = "element";

GType DeviceType() {
    static const GType type = g_type_register_static_simple(
        GST_TYPE_DEVICE, "KivoTestDevice", sizeof(GstDeviceClass),
        [](gpointer klass, gpointer) {
            GST_DEVICE_CLASS(klass)->create_element = [](GstDevice* device, const gchar*) {
                const auto* const text =
                    static_cast<const char*>(g_object_get_data(G_OBJECT(device), kElementKey));
                return gst_parse_bin_from_description(text, TRUE, nullptr);
            };
        },
        sizeof(GstDevice), nullptr, GTypeFlags{});
    return type;
}

GstDevice* MakeDevice(const TestDevice& device) {
    GstCaps* const caps = gst_caps_from_string(device.caps.c_str());
    GstStructure* const properties =
        gst_structure_from_string(("properties" + device.properties).c_str(), nullptr);
    gpointer const object =
        g_object_new(DeviceType(), "display-name", device.name.c_str(), "caps", caps,
                     "device-class", device.deviceClass, "properties", properties, nullptr);
    g_object_set_data_full(G_OBJECT(object), kElementKey, g_strdup(device.element.c_str()), g_free);
    gst_caps_unref(caps);
    gst_structure_free(properties);
    return GST_DEVICE(object);
}

GList* Probe(GstDeviceProvider*) {
    GList* list = nullptr;
    for (const TestDevice& device : gDevices) list = g_list_append(list, MakeDevice(device));
    return list;
}

gboolean StartAnnouncing(GstDeviceProvider* provider) {
    gAnnouncer = provider;
    for (const TestDevice& device : gDevices) PlugIn(device);
    return TRUE;
}

void InitLister(gpointer klass, gpointer) {
    GST_DEVICE_PROVIDER_CLASS(klass)->probe = &Probe;
    gst_device_provider_class_set_static_metadata(GST_DEVICE_PROVIDER_CLASS(klass), "Test",
                                                  "Video/Source", "Test", "Test");
}

void InitAnnouncer(gpointer klass, gpointer data) {
    InitLister(klass, data);
    GST_DEVICE_PROVIDER_CLASS(klass)->start = &StartAnnouncing;
    GST_DEVICE_PROVIDER_CLASS(klass)->stop = [](GstDeviceProvider*) { gAnnouncer = nullptr; };
}

void Register(const char* name, const char* type, GClassInitFunc init) {
    gst_device_provider_register(nullptr, name, GST_RANK_NONE,
                                 g_type_register_static_simple(
                                     GST_TYPE_DEVICE_PROVIDER, type, sizeof(GstDeviceProviderClass),
                                     init, sizeof(GstDeviceProvider), nullptr, GTypeFlags{}));
}

template <gboolean (*start)(GstBaseSrc*)>
void RegisterSource(const char* name) {
    const auto init = [](gpointer klass, gpointer) {
        static GstStaticPadTemplate source =
            GST_STATIC_PAD_TEMPLATE("src", GST_PAD_SRC, GST_PAD_ALWAYS, GST_STATIC_CAPS_ANY);
        gst_element_class_add_static_pad_template(GST_ELEMENT_CLASS(klass), &source);
        gst_element_class_set_static_metadata(GST_ELEMENT_CLASS(klass), "Test", "Source", "Test",
                                              "Test");
        GST_BASE_SRC_CLASS(klass)->start = start;
    };
    gst_element_register(
        nullptr, name, GST_RANK_NONE,
        g_type_register_static_simple(GST_TYPE_PUSH_SRC, name, sizeof(GstPushSrcClass), init,
                                      sizeof(GstPushSrc), nullptr, GTypeFlags{}));
}

gboolean StartBusy(GstBaseSrc* source) {
    GST_ELEMENT_ERROR(source, RESOURCE, BUSY, ("taken"), (nullptr));
    return FALSE;
}

gboolean StartTaken(GstBaseSrc* source) {
    GST_ELEMENT_ERROR(source, RESOURCE, OPEN_READ_WRITE, ("cannot open"),
                      ("system error: Device or resource busy"));
    return FALSE;
}

std::atomic<int> gSlowStarts = 0;

gboolean StartSlowly(GstBaseSrc*) {
    ++gSlowStarts;
    g_usleep(G_USEC_PER_SEC * 3 / 2);
    return FALSE;
}

}  // namespace

int SlowStarts() {
    return gSlowStarts;
}

void Provide(const std::vector<TestDevice>& devices) {
    gst_init(nullptr, nullptr);
    gDevices = devices;
    static const bool isRegistered = [] {
        Register(kAnnouncingProvider, "KivoTestAnnouncer", &InitAnnouncer);
        Register(kSilentProvider, "KivoTestLister", &InitLister);
        RegisterSource<&StartBusy>(kBusyElement);
        RegisterSource<&StartTaken>(kTakenElement);
        RegisterSource<&StartSlowly>(kSlowElement);
        return true;
    }();
    (void)isRegistered;
}

void PlugIn(const TestDevice& device) {
    gst_device_provider_device_add(gAnnouncer, MakeDevice(device));
}

void PullOut(const std::string& name) {
    GList* const devices = gst_device_provider_get_devices(gAnnouncer);
    for (GList* i = devices; i != nullptr; i = i->next) {
        gchar* const found = gst_device_get_display_name(GST_DEVICE(i->data));
        if (found == name) gst_device_provider_device_remove(gAnnouncer, GST_DEVICE(i->data));
        g_free(found);
    }
    g_list_free_full(devices, gst_object_unref);
}

}  // namespace Osp::Testing
