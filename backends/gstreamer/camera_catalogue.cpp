#include "backends/gstreamer/camera_catalogue.h"

#include <algorithm>
#include <utility>

#include "backends/gstreamer/device_description.h"
#include "backends/v4l2/video_files.h"

// The provider is asked itself: a monitor would start those of all libraries at once, some of them
// take hold of the devices that others are to open, and libcamera's hides the one of v4l2. Starting
// it opens every device and may take long, so it happens on the worker; from then on it announces
// what comes and goes on a thread of its own, some cameras twice: those that were there at its
// start it both lists and announces, and a device that is probed again is announced as a new
// object. File and id decide which are the same.

namespace Osp::Media {

namespace {

using DeviceList = std::unique_ptr<GList, void (*)(GList*)>;

DeviceList DevicesOf(GstDeviceProvider& provider) {
    return {gst_device_provider_get_devices(&provider),
            [](GList* list) { g_list_free_full(list, gst_object_unref); }};
}

}  // namespace

CameraCatalogue::CameraCatalogue(std::string provider) : providerName_(std::move(provider)) {
    worker_.Post([this] { Begin(); });
}

CameraCatalogue::~CameraCatalogue() {
    worker_.Post([this] {
        if (bus_) gst_device_provider_stop(provider_.get());
        if (bus_) gst_bus_set_sync_handler(bus_.get(), nullptr, nullptr, nullptr);
    });
}

void CameraCatalogue::Begin() {
    gst_init(nullptr, nullptr);
    provider_.reset(gst_device_provider_factory_get_by_name(providerName_.c_str()));
    if (provider_ && gst_device_provider_can_monitor(provider_.get())) {
        bus_.reset(gst_device_provider_get_bus(provider_.get()));
        gst_bus_set_sync_handler(bus_.get(), &OnMessage, this, nullptr);
        if (!gst_device_provider_start(provider_.get())) bus_.reset();
    }
    {
        const std::lock_guard lock(mutex_);
        hasProvider_ = provider_ != nullptr;
        announces_ = bus_ != nullptr;
    }
    if (provider_) List();
    const std::lock_guard lock(mutex_);
    isKnown_ = true;
    known_.notify_all();
}

void CameraCatalogue::List() {
    const DeviceList devices = DevicesOf(*provider_);
    std::vector<CataloguedCamera> found;
    for (const GList* i = devices.get(); i != nullptr; i = i->next) {
        if (auto camera = Describe(*GST_DEVICE(i->data))) found.push_back(std::move(*camera));
    }
    const std::lock_guard lock(mutex_);
    if (!announces_) cameras_.clear();  // else what has gone is announced
    for (CataloguedCamera& camera : found) Add(std::move(camera));
    isLooking_ = false;
    TellWatchers();
}

bool CameraCatalogue::WaitUntilKnown(std::chrono::milliseconds limit) {
    std::unique_lock lock(mutex_);
    return known_.wait_for(lock, limit, [this] { return isKnown_; });
}

bool CameraCatalogue::HasProvider() const {
    const std::lock_guard lock(mutex_);
    return hasProvider_;
}

std::vector<CataloguedCamera> CameraCatalogue::Cameras() const {
    const std::lock_guard lock(mutex_);
    std::vector<CataloguedCamera> cameras;
    for (const auto& [id, camera] : cameras_) cameras.push_back(camera);
    return cameras;
}

std::optional<CataloguedCamera> CameraCatalogue::Find(const std::string& id) {
    const std::lock_guard lock(mutex_);
    const CataloguedCamera* const found = FindLocked(id);
    if (found != nullptr) return *found;
    if (hasProvider_ && !announces_ && !std::exchange(isLooking_, true)) {
        worker_.Post([this] { List(); });
    }
    return std::nullopt;
}

const CataloguedCamera* CameraCatalogue::FindLocked(const std::string& id) const {
    const auto named = id.empty() ? cameras_.begin() : cameras_.find(id);
    if (named != cameras_.end()) return &named->second;
    const auto led = std::ranges::find_if(
        cameras_, [&id](const auto& entry) { return LeadsTo(id, entry.second.file); });
    return led == cameras_.end() ? nullptr : &led->second;
}

void CameraCatalogue::Watch(const void* watcher, const std::string& id,
                            std::function<void()> changed) {
    const std::lock_guard lock(mutex_);
    if (changed) {
        watchers_[watcher] = {id, FindLocked(id) != nullptr, std::move(changed)};
    } else {
        watchers_.erase(watcher);
    }
}

// With mutex_ held.
void CameraCatalogue::Add(CataloguedCamera camera) {
    // Its links may have appeared only now, and its old name goes with the old object.
    std::erase_if(cameras_, [&camera](const auto& entry) {
        return !camera.file.empty() && entry.second.file == camera.file;
    });
    std::string id = camera.info.id;
    cameras_[std::move(id)] = std::move(camera);
}

// With mutex_ held.
void CameraCatalogue::TellWatchers() {
    for (auto& [key, watcher] : watchers_) {
        const bool isThere = FindLocked(watcher.id) != nullptr;
        if (std::exchange(watcher.wasThere, isThere) != isThere) watcher.changed();
    }
}

void CameraCatalogue::Replace(const GstDevice* former, GstDevice* device) {
    auto camera = device == nullptr ? std::nullopt : Describe(*device);
    const std::lock_guard lock(mutex_);
    std::erase_if(cameras_,
                  [former](const auto& entry) { return entry.second.device.get() == former; });
    if (camera) Add(std::move(*camera));
    TellWatchers();
}

GstBusSyncReply CameraCatalogue::OnMessage(GstBus*, GstMessage* message, gpointer catalogue) {
    auto& self = *static_cast<CameraCatalogue*>(catalogue);
    GstDevice* device = nullptr;
    GstDevice* former = nullptr;
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_DEVICE_ADDED) {
        gst_message_parse_device_added(message, &device);
    } else if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_DEVICE_REMOVED) {
        gst_message_parse_device_removed(message, &former);
    } else if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_DEVICE_CHANGED) {
        gst_message_parse_device_changed(message, &device, &former);
    }
    const GstOwner<GstDevice> deviceOwner(device);
    const GstOwner<GstDevice> formerOwner(former);
    self.Replace(former, device);
    gst_message_unref(message);
    return GST_BUS_DROP;
}

}  // namespace Osp::Media
