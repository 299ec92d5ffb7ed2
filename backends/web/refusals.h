// What pages may not do here.
#pragma once

#include <webkit/webkit.h>

namespace Osp::Web {

/// Turns off what this device does not offer to pages, and answers no to whatever they ask for:
/// other windows, files, the camera, notes, dialogs that would block, menus. Holds for the view's
/// life.
void RefuseAllElse(WebKitWebView* view);

/// Whether anything may be fetched from there.
bool IsOfTheWeb(const char* url);

}  // namespace Osp::Web
