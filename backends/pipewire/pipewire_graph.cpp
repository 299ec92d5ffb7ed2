#include "backends/pipewire/pipewire_graph.h"

#include <algorithm>
#include <cstdlib>
#include <initializer_list>
#include <pipewire/extensions/metadata.h>
#include <span>
#include <string_view>

#include "backends/pipewire/video_formats.h"

namespace Osp::Media {

namespace {

std::string Property(const spa_dict* properties, std::initializer_list<const char*> keys) {
    for (const char* key : keys) {
        const char* const value =
            properties != nullptr ? spa_dict_lookup(properties, key) : nullptr;
        if (value != nullptr && *value != '\0') return value;
    }
    return {};
}

std::uint32_t NumberProperty(const spa_dict* properties, const char* key) {
    const std::string text = Property(properties, {key});
    return text.empty() ? 0 : static_cast<std::uint32_t>(std::strtoul(text.c_str(), nullptr, 10));
}

CameraFacing FacingOf(const spa_dict* properties) {
    const std::string location = Property(properties, {"api.libcamera.location"});
    if (location == "back") return CameraFacing::kBack;
    if (location == "front") return CameraFacing::kFront;
    return CameraFacing::kUnknown;
}

}  // namespace

/// A camera and what is asked of its node.
class PipewireGraph::Node {
  public:
    Node(PipewireGraph& graph, pw_registry* registry, std::uint32_t id, const spa_dict* properties)
        : graph_(graph) {
        camera.nodeId = id;
        name = Property(properties, {PW_KEY_NODE_NAME});
        camera.serial = Property(properties, {PW_KEY_OBJECT_SERIAL});
        camera.info.name =
            Property(properties, {PW_KEY_NODE_DESCRIPTION, PW_KEY_NODE_NICK, PW_KEY_NODE_NAME});
        proxy_ = static_cast<pw_proxy*>(
            pw_registry_bind(registry, id, PW_TYPE_INTERFACE_Node, PW_VERSION_NODE, 0));
        if (proxy_ == nullptr) return;
        pw_node_add_listener(reinterpret_cast<pw_node*>(proxy_), &hook_, &kEvents, this);
    }
    ~Node() {
        if (proxy_ == nullptr) return;
        spa_hook_remove(&hook_);
        pw_proxy_destroy(proxy_);
    }
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    PipewireCamera camera;
    std::string name;

  private:
    static const pw_node_events kEvents;

    void OnInfo(const pw_node_info& info);
    void OnParameter(std::uint32_t id, std::uint32_t index, const spa_pod* parameter);

    PipewireGraph& graph_;
    pw_proxy* proxy_ = nullptr;  // owned
    spa_hook hook_{};
};

const pw_node_events PipewireGraph::Node::kEvents = [] {
    pw_node_events events{};
    events.version = PW_VERSION_NODE_EVENTS;
    events.info = [](void* node, const pw_node_info* info) {
        static_cast<Node*>(node)->OnInfo(*info);
    };
    events.param = [](void* node, int, std::uint32_t id, std::uint32_t index, std::uint32_t,
                      const spa_pod* parameter) {
        static_cast<Node*>(node)->OnParameter(id, index, parameter);
    };
    return events;
}();

void PipewireGraph::Node::OnInfo(const pw_node_info& info) {
    if ((info.change_mask & PW_NODE_CHANGE_MASK_PROPS) != 0) {
        camera.info.facing = FacingOf(info.props);
        camera.file = Property(info.props, {"api.v4l2.path"});
    }
    if ((info.change_mask & PW_NODE_CHANGE_MASK_STATE) != 0) {
        const bool hasError = info.state == PW_NODE_STATE_ERROR;
        camera.error = hasError ? (info.error != nullptr ? info.error : "error") : "";
        if (hasError) graph_.listener_.OnGraphChanged();
    }
    if ((info.change_mask & PW_NODE_CHANGE_MASK_PARAMS) == 0) return;
    for (const spa_param_info& parameter : std::span(info.params, info.n_params)) {
        if (parameter.id != SPA_PARAM_EnumFormat || (parameter.flags & SPA_PARAM_INFO_READ) == 0) {
            continue;
        }
        pw_node_enum_params(reinterpret_cast<pw_node*>(proxy_), 0, SPA_PARAM_EnumFormat, 0,
                            UINT32_MAX, nullptr);
    }
}

void PipewireGraph::Node::OnParameter(std::uint32_t id, std::uint32_t index,
                                      const spa_pod* parameter) {
    if (id != SPA_PARAM_EnumFormat || parameter == nullptr) return;
    if (index == 0) camera.info.modes.clear();  // they are told anew
    AppendModes(*parameter, camera.info.modes);
    if (camera.info.modes.empty()) return;
    camera.isKnown = true;
    graph_.NameCameras();
    graph_.listener_.OnGraphChanged();
}

/// What goes from one node to another. A device that is taken refuses here when its format is set.
class PipewireGraph::Link {
  public:
    Link(PipewireGraph& graph, pw_registry* registry, std::uint32_t id, const spa_dict* properties)
        : output(NumberProperty(properties, PW_KEY_LINK_OUTPUT_NODE)),
          input(NumberProperty(properties, PW_KEY_LINK_INPUT_NODE)),
          graph_(graph),
          proxy_(static_cast<pw_proxy*>(
              pw_registry_bind(registry, id, PW_TYPE_INTERFACE_Link, PW_VERSION_LINK, 0))) {
        if (proxy_ == nullptr) return;
        pw_link_add_listener(reinterpret_cast<pw_link*>(proxy_), &hook_, &kEvents, this);
    }
    ~Link() {
        if (proxy_ == nullptr) return;
        spa_hook_remove(&hook_);
        pw_proxy_destroy(proxy_);
    }
    Link(const Link&) = delete;
    Link& operator=(const Link&) = delete;

    const std::uint32_t output;
    const std::uint32_t input;
    std::string error;

  private:
    static const pw_link_events kEvents;

    PipewireGraph& graph_;
    pw_proxy* proxy_;  // owned
    spa_hook hook_{};
};

const pw_link_events PipewireGraph::Link::kEvents = [] {
    pw_link_events events{};
    events.version = PW_VERSION_LINK_EVENTS;
    events.info = [](void* data, const pw_link_info* info) {
        auto& link = *static_cast<Link*>(data);
        if (info->state != PW_LINK_STATE_ERROR) return;
        link.error = info->error != nullptr ? info->error : "error";
        link.graph_.listener_.OnGraphChanged();
    };
    return events;
}();

const pw_registry_events PipewireGraph::kEvents = [] {
    pw_registry_events events{};
    events.version = PW_VERSION_REGISTRY_EVENTS;
    events.global = [](void* graph, std::uint32_t id, std::uint32_t, const char* type,
                       std::uint32_t, const spa_dict* properties) {
        static_cast<PipewireGraph*>(graph)->OnGlobal(id, type, properties);
    };
    events.global_remove = [](void* graph, std::uint32_t id) {
        static_cast<PipewireGraph*>(graph)->OnRemoved(id);
    };
    return events;
}();

PipewireGraph::PipewireGraph(pw_core* core, Listener& listener) : listener_(listener) {
    registry_ = pw_core_get_registry(core, PW_VERSION_REGISTRY, 0);
    if (registry_ != nullptr) pw_registry_add_listener(registry_, &hook_, &kEvents, this);
}

PipewireGraph::~PipewireGraph() {
    links_.clear();
    nodes_.clear();
    if (registry_ == nullptr) return;
    spa_hook_remove(&hook_);
    pw_proxy_destroy(reinterpret_cast<pw_proxy*>(registry_));
}

void PipewireGraph::OnGlobal(std::uint32_t id, const char* type, const spa_dict* properties) {
    const std::string_view kind(type);
    if (kind == PW_TYPE_INTERFACE_Link) {
        links_[id] = std::make_unique<Link>(*this, registry_, id, properties);
    } else if (kind == PW_TYPE_INTERFACE_Metadata) {
        if (Property(properties, {PW_KEY_METADATA_NAME}) == "default") defaultMetadata_ = id;
    } else if (kind == PW_TYPE_INTERFACE_Node) {
        const std::string mediaClass = Property(properties, {PW_KEY_MEDIA_CLASS});
        if (mediaClass == "Video/Source") {
            nodes_[id] = std::make_unique<Node>(*this, registry_, id, properties);
        } else if (mediaClass == "Stream/Input/Video") {
            consumers_[id] = Property(properties, {PW_KEY_APP_NAME, PW_KEY_NODE_NAME});
        }
    }
}

void PipewireGraph::OnRemoved(std::uint32_t id) {
    links_.erase(id);
    consumers_.erase(id);
    if (defaultMetadata_ == id) defaultMetadata_ = 0;
    if (nodes_.erase(id) == 0) return;
    NameCameras();
    listener_.OnGraphChanged();
}

// A node's name comes from the port that the device is plugged into and stays the same; two nodes
// of one name are told apart by their order, which is that of their appearance.
void PipewireGraph::NameCameras() {
    std::map<std::string, int> counts;
    for (const auto& [id, node] : nodes_) {
        const int number = ++counts[node->name];
        node->camera.info.id = number == 1 ? node->name : node->name + "#" + std::to_string(number);
    }
}

std::vector<const PipewireCamera*> PipewireGraph::Cameras() const {
    std::vector<const PipewireCamera*> cameras;
    for (const auto& [id, node] : nodes_) {
        if (node->camera.isKnown) cameras.push_back(&node->camera);
    }
    std::ranges::sort(cameras, {}, [](const PipewireCamera* camera) { return camera->info.id; });
    return cameras;
}

const PipewireCamera* PipewireGraph::Find(const std::string& id) const {
    const auto cameras = Cameras();
    const auto found = std::ranges::find_if(cameras, [&id](const PipewireCamera* camera) {
        return id.empty() || camera->info.id == id;
    });
    return found == cameras.end() ? nullptr : *found;
}

std::string PipewireGraph::ErrorOf(const PipewireCamera& camera) const {
    if (!camera.error.empty()) return camera.error;
    for (const auto& [id, link] : links_) {
        if (link->output == camera.nodeId && !link->error.empty()) return link->error;
    }
    return {};
}

std::vector<std::string> PipewireGraph::UsersOf(const PipewireCamera& camera) const {
    std::vector<std::string> users;
    for (const auto& [id, link] : links_) {
        const auto consumer = consumers_.find(link->input);
        if (link->output == camera.nodeId && consumer != consumers_.end()) {
            users.push_back(consumer->second);
        }
    }
    return users;
}

}  // namespace Osp::Media
