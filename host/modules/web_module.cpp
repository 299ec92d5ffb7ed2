#include "host/modules/web_module.h"

#include <cstdio>

#include "host/modules/application_library.h"

namespace Host {

std::unique_ptr<Osp::Web::WebView> WebModule::MakeView(Osp::Web::WebViewClient& client,
                                                       std::string& whyNot) {
    if (window_ == nullptr) {
        whyNot = "There is no display.";
        return nullptr;
    }
    if (!engine_) {
        Outcome<void*> maker =
            LoadSymbol(PackageFolder() + "/lib/libkivo-web.so", Osp::Web::kMakeWebEngineSymbol);
        if (!maker) {
            std::fprintf(stderr, "kivo-camera: %s\n", maker.Why().message.c_str());
            whyNot = "The web engine (libwebkitgtk-6.0) is not installed.";
            return nullptr;
        }
        engine_.reset(
            reinterpret_cast<Osp::Web::MakeWebEngineFunction>(*maker)(*window_, options_));
    }
    return engine_->MakeView(client, whyNot);
}

}  // namespace Host
