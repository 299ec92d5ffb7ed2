#include "backends/window/screen_saver.h"

#include <utility>

namespace Osp::Ui {

namespace {

constexpr guint kSettleMs = 500;
constexpr int kCallTimeoutMs = 5000;
constexpr const char* kService = "org.freedesktop.ScreenSaver";
constexpr const char* kPath = "/org/freedesktop/ScreenSaver";

/// The result of a call; null when it failed, and `isCancelled` when nobody may be told.
GVariant* Result(GObject* bus, GAsyncResult* result, bool& isCancelled) {
    GError* error = nullptr;
    GVariant* const answer = g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &error);
    isCancelled = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED);
    g_clear_error(&error);
    return answer;
}

}  // namespace

ScreenSaver::ScreenSaver() : cancellable_(g_cancellable_new()) {}

ScreenSaver::~ScreenSaver() {
    if (settling_ != 0) g_source_remove(settling_);
    g_cancellable_cancel(cancellable_);
    g_object_unref(cancellable_);
    g_clear_object(&bus_);
}

void ScreenSaver::Inhibit(bool inhibit) {
    isWanted_ = inhibit;
    if (settling_ != 0) g_source_remove(settling_);
    const auto settled = [](gpointer self) {
        static_cast<ScreenSaver*>(self)->OnSettled();
        return static_cast<gboolean>(G_SOURCE_REMOVE);
    };
    settling_ = g_timeout_add(kSettleMs, settled, this);
}

void ScreenSaver::OnSettled() {
    settling_ = 0;
    if (bus_ != nullptr) return Apply();
    if (std::exchange(isCalling_, true)) return;
    g_bus_get(G_BUS_TYPE_SESSION, cancellable_, &ScreenSaver::OnBus, this);
}

void ScreenSaver::OnBus(GObject*, GAsyncResult* result, gpointer data) {
    GError* error = nullptr;
    GDBusConnection* const bus = g_bus_get_finish(result, &error);
    if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED)) return g_error_free(error);
    g_clear_error(&error);
    auto& self = *static_cast<ScreenSaver*>(data);
    self.isCalling_ = false;
    self.bus_ = bus;
    self.hasFailed_ = bus == nullptr;
    self.Apply();
}

void ScreenSaver::Apply() {
    if (isCalling_ || hasFailed_ || isWanted_ == (cookie_ != 0)) return;
    isCalling_ = true;
    if (isWanted_) {
        Call("Inhibit", g_variant_new("(ss)", "KIVO Camera", "The camera is on"), OnInhibited);
    } else {
        Call("UnInhibit", g_variant_new("(u)", std::exchange(cookie_, 0)), OnAllowed);
    }
}

void ScreenSaver::Call(const char* method, GVariant* arguments, GAsyncReadyCallback callback) {
    g_dbus_connection_call(bus_, kService, kPath, kService, method, arguments, nullptr,
                           G_DBUS_CALL_FLAGS_NONE, kCallTimeoutMs, cancellable_, callback, this);
}

void ScreenSaver::OnInhibited(GObject* bus, GAsyncResult* result, gpointer data) {
    bool isCancelled = false;
    GVariant* const answer = Result(bus, result, isCancelled);
    if (isCancelled) return;
    auto& self = *static_cast<ScreenSaver*>(data);
    self.isCalling_ = false;
    self.hasFailed_ = answer == nullptr || !g_variant_is_of_type(answer, G_VARIANT_TYPE("(u)"));
    if (!self.hasFailed_) g_variant_get(answer, "(u)", &self.cookie_);
    if (answer != nullptr) g_variant_unref(answer);
    self.Apply();
}

void ScreenSaver::OnAllowed(GObject* bus, GAsyncResult* result, gpointer data) {
    bool isCancelled = false;
    GVariant* const answer = Result(bus, result, isCancelled);
    if (isCancelled) return;
    if (answer != nullptr) g_variant_unref(answer);
    auto& self = *static_cast<ScreenSaver*>(data);
    self.isCalling_ = false;
    self.Apply();
}

}  // namespace Osp::Ui
