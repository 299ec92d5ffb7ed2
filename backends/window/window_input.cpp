#include "backends/window/window_input.h"

#include <iterator>
#include <utility>

#include "backends/window/letterbox.h"
#include "osp/base/event_loop.h"
#include "osp/ui/input.h"
#include "osp/ui/screen.h"

// The phone has one finger. The first mouse button or touch that goes down is it, until it is let
// go; others are swallowed meanwhile. Every press is followed by one release or cancel, and every
// key by its release, whatever the toolkit leaves out: a window that loses the focus or is
// minimised hears of no release, so LetGo makes up for it.

namespace Osp::Ui {

using Graphics::Point;

namespace {

constexpr guint kXf86Camera = 0x100810d4;  // newer than the toolkit's own list

constexpr std::pair<guint, KeyCode> kKeys[] = {
    {kXf86Camera, KeyCode::kCamera},
    {GDK_KEY_WebCam, KeyCode::kCamera},
    {GDK_KEY_AudioRaiseVolume, KeyCode::kCamera},
    {GDK_KEY_F1, KeyCode::kSoftKey0},
    {GDK_KEY_F2, KeyCode::kSoftKey1},
    {GDK_KEY_Escape, KeyCode::kBack},
    {GDK_KEY_Back, KeyCode::kBack},
    {GDK_KEY_Left, KeyCode::kLeft},
    {GDK_KEY_Right, KeyCode::kRight},
};

/// Let the focused button act; the camera key where there is no focus.
bool IsConfirmation(guint keyval) {
    return keyval == GDK_KEY_space || keyval == GDK_KEY_Return || keyval == GDK_KEY_KP_Enter;
}

bool IsTab(guint keyval) {
    return keyval == GDK_KEY_Tab || keyval == GDK_KEY_ISO_Left_Tab;
}

KeyCode CodeOf(guint keyval) {
    if (IsConfirmation(keyval)) return KeyCode::kCamera;
    for (const auto& [key, code] : kKeys) {
        if (key == keyval) return code;
    }
    return KeyCode::kNone;
}

void Post(std::function<void()> task) {
    Base::EventLoop::Current().Post(Base::EventClass::kSystem, std::move(task));
}

}  // namespace

WindowInput::WindowInput(GtkWindow* window, GtkWidget* picture)
    : window_(window), picture_(picture), text_(picture) {
    GtkEventController* const pointer = gtk_event_controller_legacy_new();
    g_signal_connect(pointer, "event",
                     G_CALLBACK(+[](GtkEventController*, GdkEvent* event, gpointer self) {
                         return static_cast<WindowInput*>(self)->OnEvent(event);
                     }),
                     this);
    // Before the widgets that lie over the picture.
    gtk_event_controller_set_propagation_phase(pointer, GTK_PHASE_CAPTURE);
    gtk_widget_add_controller(picture_, pointer);

    GtkEventController* const keys = gtk_event_controller_key_new();
    // Before the toolkit takes Space and Enter for its own purposes.
    gtk_event_controller_set_propagation_phase(keys, GTK_PHASE_CAPTURE);
    g_signal_connect(keys, "key-pressed",
                     G_CALLBACK(+[](GtkEventController* controller, guint keyval, guint,
                                    GdkModifierType, gpointer self) -> gboolean {
                         return static_cast<WindowInput*>(self)->OnKey(controller, keyval, true);
                     }),
                     this);
    g_signal_connect(keys, "key-released",
                     G_CALLBACK(+[](GtkEventController* controller, guint keyval, guint,
                                    GdkModifierType, gpointer self) {
                         static_cast<WindowInput*>(self)->OnKey(controller, keyval, false);
                     }),
                     this);
    gtk_widget_add_controller(GTK_WIDGET(window_), keys);
}

Point WindowInput::ScreenPoint(GdkEvent* event) const {
    double x = 0;
    double y = 0;
    gdk_event_get_position(event, &x, &y);
    double offsetX = 0;
    double offsetY = 0;
    gtk_native_get_surface_transform(GTK_NATIVE(window_), &offsetX, &offsetY);
    double pictureX = 0;
    double pictureY = 0;
    gtk_widget_translate_coordinates(GTK_WIDGET(window_), picture_, x - offsetX, y - offsetY,
                                     &pictureX, &pictureY);
    return Letterbox(gtk_widget_get_width(picture_), gtk_widget_get_height(picture_), Screen::kSize)
        .ToScreen(pictureX, pictureY);
}

bool WindowInput::IsTracked(GdkEvent* event) const {
    return isDown_ && gdk_event_get_event_sequence(event) == sequence_;
}

bool WindowInput::IsForView(GdkEvent* event) const {
    const Screen& screen = Screen::Current();
    const Control* const control = screen.FindTouchableAt(ScreenPoint(event));
    return control != nullptr && control->IsEnabled() &&
           screen.GetOutsideViews().Of(*control) != nullptr;
}

gboolean WindowInput::OnPress(GdkEvent* event) {
    if (isDown_) return TRUE;
    if (IsForView(event)) {
        // Whoever has a finger on the screen needs no ring.
        Post([] { Screen::Current().SetFocus(nullptr); });
        return FALSE;
    }
    isDown_ = true;
    sequence_ = gdk_event_get_event_sequence(event);
    Post([p = ScreenPoint(event)] { Input::Current().Press(p); });
    return TRUE;
}

gboolean WindowInput::OnEvent(GdkEvent* event) {
    // What a widget has opened beside itself, such as a menu, is its own.
    if (gdk_event_get_surface(event) != gtk_native_get_surface(GTK_NATIVE(window_))) return FALSE;
    const GdkEventType type = gdk_event_get_event_type(event);
    switch (type) {
        case GDK_BUTTON_PRESS:
            if (gdk_button_event_get_button(event) != GDK_BUTTON_PRIMARY) return !IsForView(event);
            [[fallthrough]];
        case GDK_TOUCH_BEGIN:
            return OnPress(event);
        case GDK_SCROLL:
            return !IsForView(event);
        case GDK_MOTION_NOTIFY:
        case GDK_TOUCH_UPDATE:
            if (IsTracked(event)) Post([p = ScreenPoint(event)] { Input::Current().Move(p); });
            return isDown_;
        case GDK_BUTTON_RELEASE:
        case GDK_TOUCH_END:
            if (!IsTracked(event)) return FALSE;
            isDown_ = false;
            Post([p = ScreenPoint(event)] { Input::Current().Release(p); });
            return TRUE;
        case GDK_TOUCH_CANCEL:
        case GDK_GRAB_BROKEN:
            if (!IsTracked(event)) return FALSE;
            isDown_ = false;
            Post([] { Input::Current().Cancel(); });
            return TRUE;
        default:
            return FALSE;
    }
}

// The keys that lead away from a page stay the phone's.
bool WindowInput::IsForView(guint keyval) const {
    if (Screen::Current().GetTypedInto() == nullptr) return false;
    const bool hasRing = Screen::Current().GetFocus() != nullptr;
    if (IsTab(keyval)) return !hasRing && TextInput::Current().GetOutsideTarget() != nullptr;
    if (IsConfirmation(keyval)) return !hasRing;
    const KeyCode code = CodeOf(keyval);
    return code == KeyCode::kNone || code == KeyCode::kLeft || code == KeyCode::kRight;
}

gboolean WindowInput::LeaveKey(GdkEvent* event) {
    const bool types = gdk_event_get_event_type(event) == GDK_KEY_PRESS &&
                       gdk_key_event_is_modifier(event) == FALSE;
    if (types) {
        Post([] {
            // The ring was on a button; the page has the keys again.
            Screen::Current().SetFocus(nullptr);
            TextInput::Current().UseRealKeyboard();
        });
    }
    return FALSE;
}

gboolean WindowInput::OnKey(GtkEventController* keys, guint keyval, bool isPress) {
    // A key of the phone's that went down before must come up there.
    const KeyCode code = CodeOf(keyval);
    const bool isHeld = !isPress && code != KeyCode::kNone && code == keyDown_;
    GdkEvent* const event = gtk_event_controller_get_current_event(keys);
    if (!isHeld && IsForView(keyval)) return LeaveKey(event);
    if (IsTab(keyval)) {
        const bool backward = keyval == GDK_KEY_ISO_Left_Tab;
        if (isPress) Post([backward] { Input::Current().FocusNext(backward); });
        return TRUE;
    }
    if (!isHeld && text_.TakeKey(event)) return TRUE;
    // What lies above a view keeps its keys from it.
    if (code == KeyCode::kNone) return gtk_window_get_focus(window_) != nullptr;
    if (isPress) {
        if (keyDown_ == code) return TRUE;  // the keyboard's own repetition
        keyDown_ = code;
        if (IsConfirmation(keyval)) {
            Post([] { Input::Current().Confirm(); });
        } else {
            Post([code] { Input::Current().KeyPress(code); });
        }
    } else {
        keyDown_ = KeyCode::kNone;
        Post([code] { Input::Current().KeyRelease(code); });
    }
    return TRUE;
}

void WindowInput::LetGo() {
    text_.LetGo();
    if (std::exchange(isDown_, false)) {
        Post([] { Input::Current().Cancel(); });
    }
    const KeyCode code = std::exchange(keyDown_, KeyCode::kNone);
    if (code != KeyCode::kNone) {
        Post([code] { Input::Current().KeyRelease(code); });
    }
}

}  // namespace Osp::Ui
