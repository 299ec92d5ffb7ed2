// Focus goes from one field to the next by way of none, and between two frames in any order: so a
// field is left only when no other has been entered a moment later.
#include "backends/web/field_watch.h"

#include <utility>

namespace Osp::Web {

namespace {

constexpr guint kLeavingMs = 100;
constexpr const char* kWorld = "kivo";  // where our scripts run
constexpr const char* kHandler = "field";

// What the script says.
constexpr int kLeft = 0;
constexpr int kTouched = 2;  // entered, or entered again, with a finger

constexpr const char* kWatchScript = R"js((() => {
    const typed = /^(|text|password|email|search|tel|url|number)$/;
    const isField = (e) => !!e && !e.readOnly && !e.disabled &&
        (e.isContentEditable || e.tagName === 'TEXTAREA' ||
         (e.tagName === 'INPUT' && typed.test(e.type)));
    const active = () => {
        let e = document.activeElement;
        while (e && e.shadowRoot && e.shadowRoot.activeElement) e = e.shadowRoot.activeElement;
        return e;
    };
    let touched = false;
    let told = false;
    const tell = (edits, again) => {
        if (edits !== told || again)
            window.webkit.messageHandlers.field.postMessage(!edits ? 0 : touched ? 2 : 1);
        told = edits;
    };
    addEventListener('keydown', () => { touched = false; }, true);
    addEventListener('pointerdown', () => { touched = true; }, true);
    addEventListener('click', () => { if (isField(active())) tell(true, touched); }, true);
    addEventListener('focusin', () => tell(isField(active()), false), true);
    addEventListener('focusout', () => tell(false, false), true);
    addEventListener('pagehide', () => tell(false, false), true);
    addEventListener('resize', () => {
        if (isField(active())) active().scrollIntoView({block: 'nearest'});
    });
})())js";

// What a form does at Enter is the engine's for real keys alone, so it is done here the same way:
// the page may object, then the form's first button for it is pressed.
constexpr const char* kEnterScript = R"js((() => {
    let field = document.activeElement;
    while (field && field.contentDocument) field = field.contentDocument.activeElement;
    while (field && field.shadowRoot && field.shadowRoot.activeElement)
        field = field.shadowRoot.activeElement;
    if (!field) return;
    const key = {key: 'Enter', code: 'Enter', keyCode: 13, bubbles: true, cancelable: true};
    const goesOn = field.dispatchEvent(new KeyboardEvent('keydown', key));
    if (goesOn && field.tagName !== 'INPUT') {
        field.ownerDocument.execCommand('insertLineBreak');
    } else if (goesOn && field.form) {
        const button = [...field.form.elements].find((e) => e.type === 'submit' || e.type === 'image');
        button ? button.click() : field.form.requestSubmit();
    }
    field.dispatchEvent(new KeyboardEvent('keyup', key));
})())js";

}  // namespace

FieldWatch::FieldWatch(WebKitUserContentManager* content, std::function<void(bool)> entered,
                       std::function<void()> left)
    : content_(WEBKIT_USER_CONTENT_MANAGER(g_object_ref(content))),
      entered_(std::move(entered)),
      left_(std::move(left)) {
    g_signal_connect(content_, "script-message-received::field",
                     G_CALLBACK(+[](WebKitUserContentManager*, JSCValue* value, gpointer self) {
                         static_cast<FieldWatch*>(self)->OnMessage(jsc_value_to_int32(value));
                     }),
                     this);
    webkit_user_content_manager_register_script_message_handler(content_, kHandler, kWorld);
    WebKitUserScript* const script = webkit_user_script_new_for_world(
        kWatchScript, WEBKIT_USER_CONTENT_INJECT_ALL_FRAMES,
        WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, kWorld, nullptr, nullptr);
    webkit_user_content_manager_add_script(content_, script);
    webkit_user_script_unref(script);
}

FieldWatch::~FieldWatch() {
    if (leaving_ != 0) g_source_remove(leaving_);
    g_signal_handlers_disconnect_by_data(content_, this);
    webkit_user_content_manager_unregister_script_message_handler(content_, kHandler, kWorld);
    g_object_unref(content_);
}

void FieldWatch::OnMessage(int message) {
    if (leaving_ != 0) g_source_remove(std::exchange(leaving_, 0));
    if (message != kLeft) {
        isEdited_ = true;
        return entered_(message == kTouched);
    }
    leaving_ = g_timeout_add_once(
        kLeavingMs,
        [](gpointer self) {
            auto* const watch = static_cast<FieldWatch*>(self);
            watch->leaving_ = 0;
            watch->Forget();
        },
        this);
}

void FieldWatch::Forget() {
    if (std::exchange(isEdited_, false)) left_();
}

void FieldWatch::PressEnter(WebKitWebView* view) {
    webkit_web_view_evaluate_javascript(view, kEnterScript, -1, kWorld, nullptr, nullptr, nullptr,
                                        nullptr);
}

}  // namespace Osp::Web
