// The input method sees a key first: it alone knows whether the key composes something. What it
// leaves is an editing command, or else nobody's. Enter and Space go past it while the ring of the
// keyboard's focus is on a button, which they press.
//
// The toolkit calls back from inside its functions, also while TextInput is in the middle of a
// change; everything is therefore posted, which keeps the order as well: what was typed before a
// command is in the text when the command runs.
#include "backends/window/text_method.h"

#include <algorithm>
#include <functional>
#include <string>
#include <utility>

#include "backends/window/letterbox.h"
#include "osp/base/event_loop.h"
#include "osp/base/owner.h"
#include "osp/ui/screen.h"

namespace Osp::Ui {

namespace {

using Step = TextEditor::Step;
using Text = Base::Owner<char, g_free>;

struct Motion {
    guint keyval;
    CaretMove plain;
    CaretMove withControl;
};

constexpr Motion kMotions[] = {
    {GDK_KEY_Left, CaretMove::kCharacterBefore, CaretMove::kWordBefore},
    {GDK_KEY_Right, CaretMove::kCharacterAfter, CaretMove::kWordAfter},
    {GDK_KEY_Up, CaretMove::kLineAbove, CaretMove::kLineAbove},
    {GDK_KEY_Down, CaretMove::kLineBelow, CaretMove::kLineBelow},
    {GDK_KEY_Home, CaretMove::kLineStart, CaretMove::kTextStart},
    {GDK_KEY_End, CaretMove::kLineEnd, CaretMove::kTextEnd},
};

struct Deletion {
    guint keyval;
    Step plain;
    Step withControl;
};

constexpr Deletion kDeletions[] = {
    {GDK_KEY_BackSpace, Step::kCharacterBefore, Step::kWordBefore},
    {GDK_KEY_Delete, Step::kCharacterAfter, Step::kWordAfter},
};

/// On the text, unless it has ended by then.
void Post(std::function<void(TextInput&)> task) {
    Base::EventLoop::Current().Post(Base::EventClass::kSystem, [task = std::move(task)] {
        if (TextInput::IsInstalled()) task(TextInput::Current());
    });
}

void Type(const Base::String& text) {
    Post([text](TextInput& input) {
        input.UseRealKeyboard();
        input.Insert(text);
    });
}

bool IsEnter(guint keyval) {
    return keyval == GDK_KEY_Return || keyval == GDK_KEY_KP_Enter;
}

GdkClipboard* Clipboard() {
    return gdk_display_get_clipboard(gdk_display_get_default());
}

void Copy(TextInput& input) {
    const Base::String text = input.GetSelection();
    if (!text.IsEmpty()) gdk_clipboard_set_text(Clipboard(), text.ToUtf8().c_str());
}

void Cut(TextInput& input) {
    Copy(input);
    if (!input.GetSelection().IsEmpty()) input.Delete(Step::kCharacterBefore);
}

void Paste(TextInput&) {
    gdk_clipboard_read_text_async(
        Clipboard(), nullptr,
        [](GObject* clipboard, GAsyncResult* result, gpointer) {
            const Text text(
                gdk_clipboard_read_text_finish(GDK_CLIPBOARD(clipboard), result, nullptr));
            if (text) Type(Base::String(std::string_view(text.get())));
        },
        nullptr);
}

struct ControlKey {
    guint keyval;
    void (*task)(TextInput& input);
};

constexpr ControlKey kControlKeys[] = {
    {GDK_KEY_a, [](TextInput& input) { input.SelectAll(); }},
    {GDK_KEY_c, Copy},
    {GDK_KEY_x, Cut},
    {GDK_KEY_v, Paste},
};

}  // namespace

TextMethod::TextMethod(GtkWidget* picture)
    : picture_(picture), context_(gtk_im_multicontext_new()) {
    gtk_im_context_set_client_widget(context_, picture);
    g_signal_connect(context_, "commit",
                     G_CALLBACK(+[](GtkIMContext*, const char* text, gpointer self) {
                         static_cast<TextMethod*>(self)->OnCommit(text);
                     }),
                     this);
    g_signal_connect(context_, "preedit-changed", G_CALLBACK(+[](GtkIMContext*, gpointer self) {
                         static_cast<TextMethod*>(self)->OnComposition();
                     }),
                     this);
    TextInput::Current().SetMethod(this);
    Follow();
}

TextMethod::~TextMethod() {
    TextInput::Current().SetMethod(nullptr);
    g_signal_handlers_disconnect_by_data(context_, this);
    gtk_im_context_set_client_widget(context_, nullptr);
    g_object_unref(context_);
}

bool TextMethod::TakeKey(GdkEvent* event) {
    Follow();
    if (edited_.Get() == nullptr) return false;
    const guint keyval = gdk_key_event_get_keyval(event);
    const bool presses = IsEnter(keyval) || keyval == GDK_KEY_space;
    if (presses && Screen::Current().GetFocus() != nullptr) return false;
    if (gtk_im_context_filter_keypress(context_, event)) return true;
    if (gdk_event_get_event_type(event) != GDK_KEY_PRESS) return false;
    return Command(keyval, gdk_event_get_modifier_state(event));
}

bool TextMethod::Command(guint keyval, GdkModifierType state) {
    const bool hasControl = (state & GDK_CONTROL_MASK) != 0;
    const bool extends = (state & GDK_SHIFT_MASK) != 0;
    if (IsEnter(keyval)) {
        Type("\n");
        return true;
    }
    const auto* const motion = std::ranges::find(kMotions, keyval, &Motion::keyval);
    if (motion != std::end(kMotions)) {
        const CaretMove move = hasControl ? motion->withControl : motion->plain;
        Post([move, extends](TextInput& input) { input.Move(move, extends); });
        return true;
    }
    const auto* const deletion = std::ranges::find(kDeletions, keyval, &Deletion::keyval);
    if (deletion != std::end(kDeletions)) {
        const Step step = hasControl ? deletion->withControl : deletion->plain;
        Post([step](TextInput& input) { input.Delete(step); });
        return true;
    }
    const auto* const key =
        std::ranges::find(kControlKeys, gdk_keyval_to_lower(keyval), &ControlKey::keyval);
    if (!hasControl || key == std::end(kControlKeys)) return false;
    Post(key->task);
    return true;
}

void TextMethod::OnCommit(const char* text) {
    Type(Base::String(text));
}

void TextMethod::OnComposition() {
    char* composed = nullptr;
    int caret = 0;  // in characters
    gtk_im_context_get_preedit_string(context_, &composed, nullptr, &caret);
    const Text owner(composed);
    const char* const place = g_utf8_offset_to_pointer(composed, caret);
    const Base::String before(std::string_view(composed, place));
    Post([text = Base::String(composed), units = before.GetLength()](TextInput& input) {
        if (!text.IsEmpty()) input.UseRealKeyboard();
        input.SetComposition(text, units);
    });
}

void TextMethod::Follow() {
    Controls::EditArea* const area = TextInput::Current().GetTarget();
    Controls::EditArea* const former = edited_.Get();
    if (area != former) {
        edited_ = area == nullptr ? WeakControl<Controls::EditArea>() : WeakControl(*area);
        gtk_im_context_reset(context_);
        area == nullptr ? gtk_im_context_focus_out(context_) : gtk_im_context_focus_in(context_);
    }
    if (area != nullptr) PlaceCaret();
}

void TextMethod::PlaceCaret() {
    const Letterbox letterbox(gtk_widget_get_width(picture_), gtk_widget_get_height(picture_),
                              Screen::kSize);
    const Graphics::Rectangle place = letterbox.ToWindow(TextInput::Current().GetCaret());
    const GdkRectangle caret{place.x, place.y, place.width, place.height};
    gtk_im_context_set_cursor_location(context_, &caret);
}

void TextMethod::Abandon() {
    gtk_im_context_reset(context_);
}

void TextMethod::LetGo() {
    gtk_im_context_reset(context_);
    gtk_im_context_focus_out(context_);
    edited_ = {};
}

}  // namespace Osp::Ui
