// A desktop's screen saver on a session bus of its own.
#pragma once

#include <atomic>
#include <gio/gio.h>
#include <gtest/gtest.h>
#include <string>

namespace Kivo::Testing {

/// Counts who keeps the screen on. Answers from the connection's own thread.
class FakeScreenSaver {
  public:
    FakeScreenSaver() {
        g_test_dbus_up(bus_);
        address = g_test_dbus_get_bus_address(bus_);
        constexpr auto kFlags =
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
        connection_ = g_dbus_connection_new_for_address_sync(address.c_str(), kFlags, nullptr,
                                                             nullptr, nullptr);
        g_dbus_connection_add_filter(connection_, &FakeScreenSaver::OnMessage, this, nullptr);
        GVariant* const owned = g_dbus_connection_call_sync(
            connection_, "org.freedesktop.DBus", "/", "org.freedesktop.DBus", "RequestName",
            g_variant_new("(su)", kName, 0U), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr,
            nullptr);
        EXPECT_NE(owned, nullptr);
        if (owned != nullptr) g_variant_unref(owned);
    }
    ~FakeScreenSaver() {
        g_dbus_connection_close_sync(connection_, nullptr, nullptr);
        g_object_unref(connection_);
        g_test_dbus_stop(bus_);  // without waiting for connections to go
        g_object_unref(bus_);
    }
    FakeScreenSaver(const FakeScreenSaver&) = delete;
    FakeScreenSaver& operator=(const FakeScreenSaver&) = delete;

    std::string address;
    std::atomic<int> inhibited = 0;  // right now
    std::atomic<int> calls = 0;

  private:
    static constexpr const char* kName = "org.freedesktop.ScreenSaver";

    static GDBusMessage* OnMessage(GDBusConnection* connection, GDBusMessage* message,
                                   gboolean isIncoming, gpointer data) {
        if (isIncoming == FALSE || g_strcmp0(g_dbus_message_get_interface(message), kName) != 0) {
            return message;
        }
        constexpr guint kCookie = 77;
        auto& self = *static_cast<FakeScreenSaver*>(data);
        ++self.calls;
        GDBusMessage* const reply = g_dbus_message_new_method_reply(message);
        if (g_strcmp0(g_dbus_message_get_member(message), "Inhibit") == 0) {
            ++self.inhibited;
            g_dbus_message_set_body(reply, g_variant_new("(u)", kCookie));
        } else {
            guint cookie = 0;
            g_variant_get(g_dbus_message_get_body(message), "(u)", &cookie);
            if (cookie == kCookie) --self.inhibited;
        }
        g_dbus_connection_send_message(connection, reply, G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr,
                                       nullptr);
        g_object_unref(reply);
        g_object_unref(message);
        return nullptr;  // nobody else answers it
    }

    GTestDBus* bus_ = g_test_dbus_new(G_TEST_DBUS_NONE);
    GDBusConnection* connection_ = nullptr;
};

}  // namespace Kivo::Testing
