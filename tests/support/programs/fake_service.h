// A service on a session bus of its own.
#pragma once

#include <gio/gio.h>
#include <gtest/gtest.h>
#include <string>

namespace Kivo::Testing {

/// While it lives, this process finds its bus and no other. Answers from the connection's own
/// thread, no sooner than the test makes calls.
class FakeService {
  public:
    FakeService(const FakeService&) = delete;
    FakeService& operator=(const FakeService&) = delete;

    std::string address;

  protected:
    explicit FakeService(const char* name) {
        g_test_dbus_up(bus_);
        address = g_test_dbus_get_bus_address(bus_);
        constexpr auto kFlags =
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
        connection_ = g_dbus_connection_new_for_address_sync(address.c_str(), kFlags, nullptr,
                                                             nullptr, nullptr);
        g_dbus_connection_add_filter(connection_, &FakeService::OnMessage, this, nullptr);
        GVariant* const owned = g_dbus_connection_call_sync(
            connection_, "org.freedesktop.DBus", "/", "org.freedesktop.DBus", "RequestName",
            g_variant_new("(su)", name, 0U), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
        EXPECT_NE(owned, nullptr);
        if (owned != nullptr) g_variant_unref(owned);
    }
    ~FakeService() {
        Leave();
        g_object_unref(connection_);
        g_test_dbus_stop(bus_);  // without waiting for connections to go
        g_object_unref(bus_);
    }

    /// The end of the derived object, or of the service on a bus that stays. Nothing is answered
    /// once this returns.
    void Leave() { g_dbus_connection_close_sync(connection_, nullptr, nullptr); }
    GDBusConnection* Connection() const { return connection_; }

    /// False for what is not the service's.
    virtual bool OnCall(GDBusMessage* call) = 0;
    /// Takes the message over.
    void Send(GDBusMessage* message) {
        g_dbus_connection_send_message(connection_, message, G_DBUS_SEND_MESSAGE_FLAGS_NONE,
                                       nullptr, nullptr);
        g_object_unref(message);
    }

  private:
    static GDBusMessage* OnMessage(GDBusConnection*, GDBusMessage* message, gboolean isIncoming,
                                   gpointer self) {
        if (isIncoming == FALSE ||
            g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL ||
            !static_cast<FakeService*>(self)->OnCall(message)) {
            return message;
        }
        g_object_unref(message);
        return nullptr;  // nobody else answers it
    }

    GTestDBus* bus_ = g_test_dbus_new(G_TEST_DBUS_NONE);
    GDBusConnection* connection_ = nullptr;
};

}  // namespace Kivo::Testing
