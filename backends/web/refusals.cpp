#include "backends/web/refusals.h"

#include <algorithm>
#include <string_view>

namespace Osp::Web {

namespace {

gboolean Handled() {
    return TRUE;
}

gboolean OnPermission(WebKitWebView*, WebKitPermissionRequest* request) {
    webkit_permission_request_deny(request);
    return TRUE;
}

gboolean OnFileChooser(WebKitWebView*, WebKitFileChooserRequest* request) {
    webkit_file_chooser_request_cancel(request);
    return TRUE;
}

gboolean OnAuthenticate(WebKitWebView*, WebKitAuthenticationRequest* request) {
    webkit_authentication_request_cancel(request);
    return TRUE;
}

/// No dialog is seen, and no question of a page keeps anybody on it.
gboolean OnDialog(WebKitWebView*, WebKitScriptDialog* dialog) {
    if (webkit_script_dialog_get_dialog_type(dialog) ==
        WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM) {
        webkit_script_dialog_confirm_set_confirmed(dialog, TRUE);
    }
    return TRUE;
}

/// Another window is this one.
GtkWidget* OnCreate(WebKitWebView* view, WebKitNavigationAction* action) {
    WebKitURIRequest* const request = webkit_navigation_action_get_request(action);
    if (IsOfTheWeb(webkit_uri_request_get_uri(request))) {
        webkit_web_view_load_request(view, request);
    }
    return nullptr;
}

}  // namespace

bool IsOfTheWeb(const char* url) {
    const std::string_view text = url == nullptr ? "" : url;
    return text.starts_with("http://") || text.starts_with("https://");
}

void RefuseAllElse(WebKitWebView* view) {
    WebKitSettings* const settings = webkit_web_view_get_settings(view);
    webkit_settings_set_enable_developer_extras(settings, FALSE);
    webkit_settings_set_enable_media_stream(settings, FALSE);
    webkit_settings_set_enable_webrtc(settings, FALSE);
    webkit_settings_set_enable_webgl(settings, FALSE);
    webkit_settings_set_enable_fullscreen(settings, FALSE);
    webkit_settings_set_javascript_can_open_windows_automatically(settings, FALSE);
    webkit_settings_set_enable_back_forward_navigation_gestures(settings, FALSE);
    g_signal_connect(view, "permission-request", G_CALLBACK(OnPermission), nullptr);
    g_signal_connect(view, "run-file-chooser", G_CALLBACK(OnFileChooser), nullptr);
    g_signal_connect(view, "authenticate", G_CALLBACK(OnAuthenticate), nullptr);
    g_signal_connect(view, "script-dialog", G_CALLBACK(OnDialog), nullptr);
    g_signal_connect(view, "create", G_CALLBACK(OnCreate), nullptr);
    for (const char* signal :
         {"context-menu", "print", "enter-fullscreen", "show-notification", "run-color-chooser"}) {
        g_signal_connect(view, signal, G_CALLBACK(Handled), nullptr);
    }
}

}  // namespace Osp::Web
