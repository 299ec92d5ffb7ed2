// Keeps the desktop from blanking the screen.
#pragma once

#include <cstdint>
#include <gio/gio.h>

namespace Osp::Ui {

/// Asks the session's screen saver service. Without a session bus or such a service nothing
/// happens; when the program ends, the service lets go by itself. Loop thread only.
class ScreenSaver {
  public:
    ScreenSaver();
    ~ScreenSaver();
    ScreenSaver(const ScreenSaver&) = delete;
    ScreenSaver& operator=(const ScreenSaver&) = delete;

    /// Takes effect half a second later, so that the power cycle of a camera that has taken a
    /// photograph is not noticed.
    void Inhibit(bool inhibit);

  private:
    void OnSettled();
    void Apply();
    void Call(const char* method, GVariant* arguments, GAsyncReadyCallback callback);
    static void OnBus(GObject*, GAsyncResult* result, gpointer self);
    static void OnInhibited(GObject* bus, GAsyncResult* result, gpointer self);
    static void OnAllowed(GObject* bus, GAsyncResult* result, gpointer self);

    GCancellable* cancellable_;
    GDBusConnection* bus_ = nullptr;
    guint settling_ = 0;  // a timeout of GLib's
    bool isWanted_ = false;
    bool isCalling_ = false;
    bool hasFailed_ = false;
    std::uint32_t cookie_ = 0;  // 0: not inhibited
};

}  // namespace Osp::Ui
