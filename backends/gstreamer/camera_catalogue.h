// The cameras that GStreamer knows of one kind, as they come and go.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <gst/gst.h>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "backends/gstreamer/gst_owner.h"
#include "osp/base/serial_worker.h"
#include "osp/media/live/camera_backend.h"

namespace Osp::Media {

struct CataloguedCamera {
    CameraInfo info;                    // `users` is left to others
    std::string file;                   // of a device of the kernel's; else empty
    std::shared_ptr<GstDevice> device;  // makes the element that delivers its pictures
};

/// Looks by itself, on threads of its own. Methods on the loop thread.
class CameraCatalogue {
  public:
    /// The cameras of the device provider with that name.
    explicit CameraCatalogue(std::string provider);
    ~CameraCatalogue();
    CameraCatalogue(const CameraCatalogue&) = delete;
    CameraCatalogue& operator=(const CameraCatalogue&) = delete;

    /// Returns false when that is not known by then.
    bool WaitUntilKnown(std::chrono::milliseconds limit);
    /// Known only then: whether the provider is installed at all.
    bool HasProvider() const;
    /// In the order of their ids.
    std::vector<CataloguedCamera> Cameras() const;
    /// The camera with that id, or that the path `id` leads to; empty: the first. Where the
    /// provider does not tell of new cameras, looking for one in vain is what makes it look again.
    std::optional<CataloguedCamera> Find(const std::string& id);

    /// `changed` is run on any thread whenever Find(id) begins or ceases to find something; an
    /// empty one ends that.
    void Watch(const void* watcher, const std::string& id, std::function<void()> changed);

  private:
    struct Watcher {
        std::string id;
        bool wasThere = false;
        std::function<void()> changed;
    };

    void Begin();
    void List();
    const CataloguedCamera* FindLocked(const std::string& id) const;
    void Add(CataloguedCamera camera);
    /// Either may be null.
    void Replace(const GstDevice* former, GstDevice* device);
    void TellWatchers();
    static GstBusSyncReply OnMessage(GstBus* bus, GstMessage* message, gpointer catalogue);

    const std::string providerName_;
    GstOwner<GstDeviceProvider> provider_;  // the worker's thread
    GstOwner<GstBus> bus_;                  // the worker's thread

    mutable std::mutex mutex_;  // guards what follows
    std::condition_variable known_;
    std::map<std::string, CataloguedCamera> cameras_;  // by id
    std::map<const void*, Watcher> watchers_;
    bool isKnown_ = false;
    bool hasProvider_ = false;
    bool announces_ = false;  // the provider tells of cameras that come and go
    bool isLooking_ = false;

    Base::SerialWorker worker_;  // last: its jobs use the others
};

}  // namespace Osp::Media
