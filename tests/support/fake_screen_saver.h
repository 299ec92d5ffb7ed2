// A desktop's screen saver on a session bus of its own.
#pragma once

#include <atomic>
#include <gio/gio.h>
#include <gtest/gtest.h>
#include <string>
#include <thread>

namespace Kivo::Testing {

/// Counts who keeps the screen on. Answers from a thread of its own.
class FakeScreenSaver {
  public:
    FakeScreenSaver() : bus_(g_test_dbus_new(G_TEST_DBUS_NONE)), context_(g_main_context_new()) {
        g_test_dbus_up(bus_);
        address = g_test_dbus_get_bus_address(bus_);
        loop_ = g_main_loop_new(context_, FALSE);
        Serve();
        thread_ = std::thread([this] {
            g_main_context_push_thread_default(context_);
            g_main_loop_run(loop_);
            g_main_context_pop_thread_default(context_);
        });
    }
    ~FakeScreenSaver() {
        g_main_loop_quit(loop_);
        thread_.join();
        g_object_unref(connection_);
        g_dbus_node_info_unref(node_);
        g_main_loop_unref(loop_);
        g_main_context_unref(context_);
        g_test_dbus_stop(bus_);  // without waiting for connections to go
        g_object_unref(bus_);
    }
    FakeScreenSaver(const FakeScreenSaver&) = delete;
    FakeScreenSaver& operator=(const FakeScreenSaver&) = delete;

    std::string address;
    std::atomic<int> inhibited = 0;  // right now
    std::atomic<int> calls = 0;

  private:
    static constexpr const char* kInterface =
        "<node><interface name='org.freedesktop.ScreenSaver'>"
        "<method name='Inhibit'><arg type='s' direction='in'/><arg type='s' direction='in'/>"
        "<arg type='u' direction='out'/></method>"
        "<method name='UnInhibit'><arg type='u' direction='in'/></method>"
        "</interface></node>";

    void Serve() {
        constexpr auto kFlags =
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
        connection_ = g_dbus_connection_new_for_address_sync(address.c_str(), kFlags, nullptr,
                                                             nullptr, nullptr);
        ASSERT_NE(connection_, nullptr);
        node_ = g_dbus_node_info_new_for_xml(kInterface, nullptr);
        static const GDBusInterfaceVTable kTable = {&FakeScreenSaver::OnCall, nullptr, nullptr, {}};
        g_main_context_push_thread_default(context_);  // the calls arrive there
        g_dbus_connection_register_object(connection_, "/org/freedesktop/ScreenSaver",
                                          node_->interfaces[0], &kTable, this, nullptr, nullptr);
        g_main_context_pop_thread_default(context_);
        GVariant* const owned = g_dbus_connection_call_sync(
            connection_, "org.freedesktop.DBus", "/", "org.freedesktop.DBus", "RequestName",
            g_variant_new("(su)", "org.freedesktop.ScreenSaver", 0U), nullptr,
            G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
        ASSERT_NE(owned, nullptr);
        g_variant_unref(owned);
    }

    static void OnCall(GDBusConnection*, const gchar*, const gchar*, const gchar*,
                       const gchar* method, GVariant* arguments, GDBusMethodInvocation* call,
                       gpointer data) {
        constexpr guint kCookie = 77;
        auto& self = *static_cast<FakeScreenSaver*>(data);
        ++self.calls;
        if (std::string(method) == "Inhibit") {
            ++self.inhibited;
            return g_dbus_method_invocation_return_value(call, g_variant_new("(u)", kCookie));
        }
        guint cookie = 0;
        g_variant_get(arguments, "(u)", &cookie);
        if (cookie == kCookie) --self.inhibited;
        g_dbus_method_invocation_return_value(call, nullptr);
    }

    GTestDBus* bus_;
    GMainContext* context_;
    GMainLoop* loop_ = nullptr;
    GDBusConnection* connection_ = nullptr;
    GDBusNodeInfo* node_ = nullptr;
    std::thread thread_;
};

}  // namespace Kivo::Testing
