// A desktop's screen saver on a session bus of its own.
#pragma once

#include <atomic>

#include "tests/support/programs/fake_service.h"

namespace Kivo::Testing {

/// Counts who keeps the screen on.
class FakeScreenSaver : public FakeService {
  public:
    FakeScreenSaver() : FakeService(kName) {}
    ~FakeScreenSaver() { Leave(); }

    std::atomic<int> inhibited = 0;  // right now
    std::atomic<int> calls = 0;

  private:
    static constexpr const char* kName = "org.freedesktop.ScreenSaver";

    bool OnCall(GDBusMessage* call) override {
        if (g_strcmp0(g_dbus_message_get_interface(call), kName) != 0) return false;
        constexpr guint kCookie = 77;
        ++calls;
        GDBusMessage* const reply = g_dbus_message_new_method_reply(call);
        if (g_strcmp0(g_dbus_message_get_member(call), "Inhibit") == 0) {
            ++inhibited;
            g_dbus_message_set_body(reply, g_variant_new("(u)", kCookie));
        } else {
            guint cookie = 0;
            g_variant_get(g_dbus_message_get_body(call), "(u)", &cookie);
            if (cookie == kCookie) --inhibited;
        }
        Send(reply);
        return true;
    }
};

}  // namespace Kivo::Testing
