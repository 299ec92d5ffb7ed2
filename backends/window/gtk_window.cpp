// The window: one texture of the composed screen, letterboxed.
#include <filesystem>
#include <gtk/gtk.h>
#include <malloc.h>
#include <memory>
#include <string>
#include <system_error>
#include <utility>

#include "backends/window/accessible_names.h"
#include "backends/window/screen_saver.h"
#include "backends/window/texture.h"
#include "backends/window/widget_layer.h"
#include "backends/window/window.h"
#include "backends/window/window_input.h"
#include "osp/app/lifecycle.h"
#include "osp/base/event_loop.h"
#include "osp/base/owner.h"
#include "osp/system/device.h"
#include "osp/ui/screen.h"

namespace Osp::Ui {

namespace {

using App::Lifecycle;
using Base::EventClass;
using Base::EventLoop;

constexpr guint kPresentLimitMs = 50;
constexpr int kMmapThreshold = 64 << 20;

// Without a GPU the toolkit's GL renderer would run in software, slower than its Cairo one.
void ChooseRenderer() {
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/dev/dri", error)) {
        if (entry.path().filename().string().starts_with("renderD")) return;
    }
    g_setenv("GSK_RENDERER", "cairo", FALSE);
}

constexpr GdkRectangle kOwnSize{0, 0, Screen::kSize.width, Screen::kSize.height};

/// On a kiosk no window manager may be there to answer the wish for the whole screen.
GdkRectangle FirstMonitor() {
    GListModel* const monitors = gdk_display_get_monitors(gdk_display_get_default());
    const Osp::Base::Owner<GdkMonitor, g_object_unref> first(
        static_cast<GdkMonitor*>(g_list_model_get_item(monitors, 0)));
    GdkRectangle bounds = kOwnSize;
    if (first) gdk_monitor_get_geometry(first.get(), &bounds);
    return bounds;
}

class GtkScreenWindow : public Window, public Presenter {
  public:
    explicit GtkScreenWindow(bool isFullscreen);
    ~GtkScreenWindow() override;

    Presenter& GetPresenter() override { return *this; }

    void FrameWanted() override;
    void PresentNow() override;

    void AddWidget(GtkWidget* widget, std::function<void(double)> scaled) override {
        widgets_.Add(widget, std::move(scaled));
    }
    void PlaceWidget(GtkWidget* widget, const Graphics::Rectangle& place) override {
        widgets_.Place(widget, place);
    }
    void RemoveWidget(GtkWidget* widget) override { widgets_.Remove(widget); }

  private:
    void UpdatePicture();
    void WatchSurface();
    void OnStateChanged();
    void OnActiveChanged();

    GtkWindow* window_;
    GtkWidget* picture_;
    WidgetLayer widgets_;
    std::unique_ptr<WindowInput> input_;
    std::unique_ptr<AccessibleNames> names_;
    ScreenSaver screenSaver_;
    guint tick_ = 0;
    unsigned paintedFrames_ = 0;
    bool isMinimised_ = false;
};

GtkScreenWindow::GtkScreenWindow(bool isFullscreen)
    : window_(GTK_WINDOW(gtk_window_new())), picture_(gtk_picture_new()), widgets_(picture_) {
    gtk_window_set_title(window_, "KIVO Camera");
    const GdkRectangle bounds = isFullscreen ? FirstMonitor() : kOwnSize;
    gtk_window_set_default_size(window_, bounds.width, bounds.height);
    gtk_picture_set_can_shrink(GTK_PICTURE(picture_), TRUE);
    gtk_picture_set_content_fit(GTK_PICTURE(picture_), GTK_CONTENT_FIT_CONTAIN);
    GtkCssProvider* const style = gtk_css_provider_new();
    gtk_css_provider_load_from_data(style, "window { background: black; }", -1);
    gtk_style_context_add_provider_for_display(gdk_display_get_default(), GTK_STYLE_PROVIDER(style),
                                               GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    g_object_unref(style);
    gtk_window_set_child(window_, widgets_.GetWidget());
    input_ = std::make_unique<WindowInput>(window_, widgets_.GetWidget());
    names_ = std::make_unique<AccessibleNames>(picture_);
    System::Device::Current().SetKeepScreenOnFunction(
        [this](bool keepOn) { screenSaver_.Inhibit(keepOn); });
    g_signal_connect(window_, "close-request", G_CALLBACK(+[](GtkWindow*, gpointer) -> gboolean {
                         EventLoop::Current().Post(EventClass::kSystem,
                                                   [] { Lifecycle::Current().Terminate(false); });
                         return TRUE;
                     }),
                     nullptr);
    if (isFullscreen) gtk_window_fullscreen(window_);
    gtk_widget_realize(GTK_WIDGET(window_));
    WatchSurface();
    UpdatePicture();
    gtk_window_present(window_);
}

GtkScreenWindow::~GtkScreenWindow() {
    System::Device::Current().SetKeepScreenOnFunction(nullptr);
    if (tick_ != 0) gtk_widget_remove_tick_callback(picture_, tick_);
    GdkSurface* const surface = gtk_native_get_surface(GTK_NATIVE(window_));
    g_signal_handlers_disconnect_by_data(window_, this);
    g_signal_handlers_disconnect_by_data(surface, this);
    g_signal_handlers_disconnect_by_data(gdk_surface_get_frame_clock(surface), this);
    gtk_window_destroy(window_);
}

void GtkScreenWindow::WatchSurface() {
    GdkSurface* const surface = gtk_native_get_surface(GTK_NATIVE(window_));
    g_signal_connect(surface, "notify::state",
                     G_CALLBACK(+[](GdkSurface*, GParamSpec*, gpointer self) {
                         static_cast<GtkScreenWindow*>(self)->OnStateChanged();
                     }),
                     this);
    g_signal_connect(window_, "notify::is-active",
                     G_CALLBACK(+[](GtkWindow*, GParamSpec*, gpointer self) {
                         static_cast<GtkScreenWindow*>(self)->OnActiveChanged();
                     }),
                     this);
    g_signal_connect(gdk_surface_get_frame_clock(surface), "after-paint",
                     G_CALLBACK(+[](GdkFrameClock*, gpointer self) {
                         ++static_cast<GtkScreenWindow*>(self)->paintedFrames_;
                     }),
                     this);
}

void GtkScreenWindow::OnStateChanged() {
    GdkSurface* const surface = gtk_native_get_surface(GTK_NATIVE(window_));
    const GdkToplevelState state = gdk_toplevel_get_state(GDK_TOPLEVEL(surface));
    const bool isMinimised = (state & GDK_TOPLEVEL_STATE_MINIMIZED) != 0;
    if (isMinimised == isMinimised_) return;
    isMinimised_ = isMinimised;
    EventLoop::Current().Post(EventClass::kSystem, [isMinimised] {
        if (isMinimised) {
            Lifecycle::Current().EnterBackground();
        } else {
            Lifecycle::Current().EnterForeground();
        }
    });
    // After the background, in which it is not released.
    if (isMinimised) input_->LetGo();
}

void GtkScreenWindow::OnActiveChanged() {
    OnStateChanged();
    if (!gtk_window_is_active(window_)) input_->LetGo();
}

// The newest state is drawn once for each frame of the display, however often it changed.
void GtkScreenWindow::FrameWanted() {
    if (tick_ != 0) return;
    tick_ = gtk_widget_add_tick_callback(
        picture_,
        [](GtkWidget*, GdkFrameClock*, gpointer self) -> gboolean {
            auto* const window = static_cast<GtkScreenWindow*>(self);
            window->tick_ = 0;
            window->UpdatePicture();
            return G_SOURCE_REMOVE;
        },
        this, nullptr);
}

void GtkScreenWindow::UpdatePicture() {
    GdkTexture* const texture = MakeTexture(Screen::Current().Compose(), Opacity::kOpaque);
    gtk_picture_set_paintable(GTK_PICTURE(picture_), GDK_PAINTABLE(texture));
    g_object_unref(texture);
    widgets_.ScreenChanged();
    names_->ScreenChanged();
}

void GtkScreenWindow::PresentNow() {
    if (!gtk_widget_get_mapped(picture_) || isMinimised_) return;
    UpdatePicture();
    const unsigned before = paintedFrames_;
    bool isLate = false;
    const guint timeout = g_timeout_add_once(
        kPresentLimitMs, [](gpointer late) { *static_cast<bool*>(late) = true; }, &isLate);
    EventLoop::Current().RunHoldingApplication([&] { return isLate || paintedFrames_ != before; });
    if (!isLate) g_source_remove(timeout);
}

}  // namespace

}  // namespace Osp::Ui

extern "C" Osp::Ui::Window* KivoMakeWindow(bool isFullscreen) {
    Osp::Ui::ChooseRenderer();
    // Frame buffers of the toolkit's own would otherwise be mapped afresh for every frame.
    mallopt(M_MMAP_THRESHOLD, Osp::Ui::kMmapThreshold);
    if (!gtk_init_check()) return nullptr;
    return new Osp::Ui::GtkScreenWindow(isFullscreen);
}
