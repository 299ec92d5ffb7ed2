// A desktop's camera portal on a session bus of its own.
#pragma once

#include <atomic>
#include <functional>
#include <gio/gunixfdlist.h>
#include <mutex>
#include <string>
#include <string_view>
#include <unistd.h>

#include "tests/support/programs/fake_service.h"

namespace Osp::Media {

/// Answers as told, when told to.
class FakePortal : public Kivo::Testing::FakeService {
  public:
    enum class Response : guint { kYes = 0, kNo = 1, kEnd = 2 };
    enum class Manner {
        kPrompt,     // the answer comes right after the call's
        kOvertake,   // the answer comes before the call's
        kOldPath,    // a request path that cannot be foreseen
        kSilent,     // no answer until Respond
        kNoCameras,  // it is a portal for other things
    };

    explicit FakePortal(const char* name = "org.freedesktop.portal.Desktop") : FakeService(name) {}
    ~FakePortal() { Leave(); }

    std::atomic<Response> response = Response::kYes;
    std::atomic<Manner> manner = Manner::kPrompt;
    std::atomic<int> questions = 0;
    /// A descriptor that becomes the portal's; none is refused.
    std::function<int()> open = [] { return -1; };

    void SetCamera(bool isPresent) {
        isPresent_ = isPresent;
        GVariantBuilder changed;
        g_variant_builder_init(&changed, G_VARIANT_TYPE_VARDICT);
        g_variant_builder_add(&changed, "{sv}", kPresent, g_variant_new_boolean(isPresent));
        Emit(nullptr, kPath, kProperties, "PropertiesChanged",
             g_variant_new("(sa{sv}as)", kCamera, &changed, nullptr));
    }
    void Respond() {
        const std::lock_guard guard(mutex_);
        GVariantBuilder results;
        g_variant_builder_init(&results, G_VARIANT_TYPE_VARDICT);
        Emit(asker_.c_str(), request_.c_str(), "org.freedesktop.portal.Request", "Response",
             g_variant_new("(ua{sv})", static_cast<guint>(response.load()), &results));
    }
    /// As if it had crashed.
    void Crash() { Leave(); }

  private:
    static constexpr const char* kPath = "/org/freedesktop/portal/desktop";
    static constexpr const char* kCamera = "org.freedesktop.portal.Camera";
    static constexpr const char* kProperties = "org.freedesktop.DBus.Properties";
    static constexpr const char* kPresent = "IsCameraPresent";

    bool OnCall(GDBusMessage* call) override {
        const std::string_view member = g_dbus_message_get_member(call);
        if (manner == Manner::kNoCameras) return false;
        if (member == "AccessCamera") return Ask(call);
        if (member == "GetAll") {
            Send(Properties(call));
        } else if (member == "OpenPipeWireRemote") {
            Send(Remote(call));
        } else {
            return false;
        }
        return true;
    }

    GDBusMessage* Properties(GDBusMessage* call) const {
        GVariantBuilder all;
        g_variant_builder_init(&all, G_VARIANT_TYPE_VARDICT);
        g_variant_builder_add(&all, "{sv}", kPresent, g_variant_new_boolean(isPresent_));
        return Reply(call, g_variant_new("(a{sv})", &all));
    }

    bool Ask(GDBusMessage* call) {
        {
            const std::lock_guard guard(mutex_);
            asker_ = g_dbus_message_get_sender(call);
            request_ = RequestPath(call);
        }
        if (manner == Manner::kOvertake) Respond();
        Send(Reply(call, g_variant_new("(o)", request_.c_str())));
        if (manner == Manner::kPrompt || manner == Manner::kOldPath) Respond();
        ++questions;
        return true;
    }

    std::string RequestPath(GDBusMessage* call) const {
        if (manner == Manner::kOldPath) return std::string(kPath) + "/request/17";
        std::string sender = asker_.substr(1);
        for (char& letter : sender) letter = letter == '.' ? '_' : letter;
        GVariant* const options = g_variant_get_child_value(g_dbus_message_get_body(call), 0);
        const char* token = "";
        g_variant_lookup(options, "handle_token", "&s", &token);
        const std::string path = std::string(kPath) + "/request/" + sender + "/" + token;
        g_variant_unref(options);
        return path;
    }

    GDBusMessage* Remote(GDBusMessage* call) const {
        const int descriptor = open();
        if (descriptor < 0) {
            return g_dbus_message_new_method_error_literal(
                call, "org.freedesktop.portal.Error.NotAllowed", "not allowed");
        }
        GUnixFDList* const list = g_unix_fd_list_new_from_array(&descriptor, 1);
        GDBusMessage* const reply = Reply(call, g_variant_new("(h)", 0));
        g_dbus_message_set_unix_fd_list(reply, list);
        g_object_unref(list);
        return reply;
    }

    static GDBusMessage* Reply(GDBusMessage* call, GVariant* body) {
        GDBusMessage* const reply = g_dbus_message_new_method_reply(call);
        g_dbus_message_set_body(reply, body);
        return reply;
    }

    void Emit(const char* to, const char* path, const char* interface, const char* signal,
              GVariant* body) {
        g_dbus_connection_emit_signal(Connection(), to, path, interface, signal, body, nullptr);
    }

    std::atomic<bool> isPresent_ = true;
    std::mutex mutex_;     // guards the following
    std::string asker_;    // unique name
    std::string request_;  // path
};

}  // namespace Osp::Media
