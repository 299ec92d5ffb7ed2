#include "backends/pipewire/portal_session.h"

#include <gio/gunixfdlist.h>
#include <optional>
#include <utility>

// The portal answers a question twice: the call returns the path of a request at once, and that
// request says later what the user has decided. The answer may even overtake the path. So the
// signal is listened to before the call, and for every path: the connection is our own and has one
// question at a time, and older portals do not name the path after the question's token.
//
// The calls have no time limit, because some portals show their dialog before they return.

namespace Osp::Media {

namespace {

constexpr const char* kService = "org.freedesktop.portal.Desktop";
constexpr const char* kPath = "/org/freedesktop/portal/desktop";
constexpr const char* kCamera = "org.freedesktop.portal.Camera";
constexpr const char* kRequest = "org.freedesktop.portal.Request";
constexpr int kNoTimeLimit = G_MAXINT;

constexpr guint kYes = 0;
constexpr guint kNo = 1;

using Variant = Base::Owner<GVariant, g_variant_unref>;
using Text = Base::Owner<char, g_free>;

/// Where a call puts its failure.
class Failure {
  public:
    ~Failure() { g_clear_error(&error_); }
    Failure() = default;
    Failure(const Failure&) = delete;
    Failure& operator=(const Failure&) = delete;

    GError** Place() { return &error_; }
    std::string Words() {
        if (error_ == nullptr) return {};
        g_dbus_error_strip_remote_error(error_);
        return error_->message;
    }
    bool IsNobodyThere() const {
        return g_error_matches(error_, G_DBUS_ERROR, G_DBUS_ERROR_UNKNOWN_METHOD) ||
               g_error_matches(error_, G_DBUS_ERROR, G_DBUS_ERROR_UNKNOWN_INTERFACE);
    }

  private:
    GError* error_ = nullptr;
};

/// A private connection: its end takes nobody else's away, and another's end not this one.
GDBusConnection* ConnectToBus(GCancellable* cancellable, Failure& failure) {
    const Text address(
        g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, cancellable, failure.Place()));
    if (!address) return nullptr;
    constexpr auto kFlags =
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    return g_dbus_connection_new_for_address_sync(address.get(), kFlags, nullptr, cancellable,
                                                  failure.Place());
}

/// Hears what requests answer, until it goes.
class Responses {
  public:
    Responses(GDBusConnection* bus, const char* sender)
        : bus_(bus),
          subscription_(g_dbus_connection_signal_subscribe(
              bus, sender, kRequest, "Response", nullptr, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
              &Responses::OnResponse, this, nullptr)) {}
    ~Responses() { g_dbus_connection_signal_unsubscribe(bus_, subscription_); }
    Responses(const Responses&) = delete;
    Responses& operator=(const Responses&) = delete;

    const std::optional<guint>& Code() const { return code_; }

  private:
    static void OnResponse(GDBusConnection*, const char*, const char*, const char*, const char*,
                           GVariant* parameters, gpointer data) {
        if (g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ua{sv})")) == FALSE) return;
        const Variant code(g_variant_get_child_value(parameters, 0));
        static_cast<Responses*>(data)->code_ = g_variant_get_uint32(code.get());
    }

    GDBusConnection* bus_;  // not owned
    guint subscription_;
    std::optional<guint> code_;
};

/// The options that a question and its opening take.
GVariant* Options(const char* token) {
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE_VARDICT);
    if (token != nullptr) {
        g_variant_builder_add(&builder, "{sv}", "handle_token", g_variant_new_string(token));
    }
    return g_variant_new("(a{sv})", &builder);
}

}  // namespace

PortalSession::~PortalSession() {
    portal_.reset();
    if (bus_) g_dbus_connection_close_sync(bus_.get(), nullptr, nullptr);
}

PortalAnswer PortalSession::Ask(const Tell& tell) {
    PortalAnswer answer = FindPortal();
    if (answer.state != PortalState::kAsking) return answer;
    if (!SeesCamera()) {
        tell({PortalState::kNoCamera, {}, {}});
        if (!Await([this] { return SeesCamera(); })) return {PortalState::kFailed, {}, {}};
        tell({PortalState::kAsking, {}, {}});
    }
    answer = AskUser();
    return answer.state == PortalState::kGranted ? OpenRemote() : std::move(answer);
}

PortalAnswer PortalSession::FindPortal() {
    Failure failure;
    bus_.reset(ConnectToBus(cancellable_, failure));
    if (!bus_) return {PortalState::kNoBus, failure.Words(), {}};
    portal_.reset(g_dbus_proxy_new_sync(bus_.get(), G_DBUS_PROXY_FLAGS_NONE, nullptr, kService,
                                        kPath, kCamera, cancellable_, failure.Place()));
    if (!portal_ || !IsPortalThere()) return {PortalState::kNoPortal, failure.Words(), {}};
    return {PortalState::kAsking, {}, {}};
}

PortalAnswer PortalSession::AskUser() {
    const Text owner(g_dbus_proxy_get_name_owner(portal_.get()));
    const Responses responses(bus_.get(), owner.get());
    Failure failure;
    const Variant handle(g_dbus_proxy_call_sync(portal_.get(), "AccessCamera", Options("camera"),
                                                G_DBUS_CALL_FLAGS_NONE, kNoTimeLimit, cancellable_,
                                                failure.Place()));
    if (!handle) {
        const auto state = failure.IsNobodyThere() ? PortalState::kNoPortal : PortalState::kFailed;
        return {state, failure.Words(), {}};
    }
    if (!Await([&] { return responses.Code().has_value(); })) {
        return {PortalState::kFailed, "it went away before it answered", {}};
    }
    if (responses.Code() == kYes) return {PortalState::kGranted, {}, {}};
    return {responses.Code() == kNo ? PortalState::kRefused : PortalState::kEnded, {}, {}};
}

PortalAnswer PortalSession::OpenRemote() {
    Failure failure;
    GUnixFDList* list = nullptr;
    const Variant result(g_dbus_proxy_call_with_unix_fd_list_sync(
        portal_.get(), "OpenPipeWireRemote", Options(nullptr), G_DBUS_CALL_FLAGS_NONE, kNoTimeLimit,
        nullptr, &list, cancellable_, failure.Place()));
    const Base::Owner<GUnixFDList, g_object_unref> descriptors(list);
    if (!result) return {PortalState::kFailed, failure.Words(), {}};
    if (list == nullptr || g_variant_is_of_type(result.get(), G_VARIANT_TYPE("(h)")) == FALSE) {
        return {PortalState::kFailed, "it gave no connection", {}};
    }
    gint index = 0;
    g_variant_get(result.get(), "(h)", &index);
    Io::FileDescriptor remote(g_unix_fd_list_get(list, index, failure.Place()));
    const auto state = remote.IsOpen() ? PortalState::kGranted : PortalState::kFailed;
    return {state, failure.Words(), std::move(remote)};
}

// A portal that says nothing about it is taken for one that sees a camera.
bool PortalSession::SeesCamera() const {
    const Variant seen(g_dbus_proxy_get_cached_property(portal_.get(), "IsCameraPresent"));
    return !seen || g_variant_is_of_type(seen.get(), G_VARIANT_TYPE_BOOLEAN) == FALSE ||
           g_variant_get_boolean(seen.get()) != FALSE;
}

bool PortalSession::IsPortalThere() const {
    return Text(g_dbus_proxy_get_name_owner(portal_.get())) != nullptr;
}

/// False when it cannot become true any more.
template <class Condition>
bool PortalSession::Await(const Condition& condition) const {
    while (!condition()) {
        if (g_cancellable_is_cancelled(cancellable_) != FALSE || !IsPortalThere() ||
            g_dbus_connection_is_closed(bus_.get()) != FALSE) {
            return false;
        }
        g_main_context_iteration(context_, TRUE);
    }
    return true;
}

}  // namespace Osp::Media
