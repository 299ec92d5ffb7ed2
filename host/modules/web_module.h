// The web engine, in a module of its own that is loaded at first use.
#pragma once

#include <memory>
#include <string>

#include "backends/web/web_module.h"
#include "host/outcome.h"

namespace Host {

/// Loads the module for the first view, and says in words why it cannot.
class WebModule : public Osp::Web::WebEngine {
  public:
    /// `window` is not owned and outlives this object; null where there is none.
    WebModule(Osp::Ui::Window* window, Osp::Web::EngineOptions options)
        : window_(window), options_(std::move(options)) {}

    std::unique_ptr<Osp::Web::WebView> MakeView(Osp::Web::WebViewClient& client,
                                                std::string& whyNot) override;

  private:
    Osp::Ui::Window* window_;
    Osp::Web::EngineOptions options_;
    std::unique_ptr<Osp::Web::WebEngine> engine_;  // the module's; null before the first view
};

}  // namespace Host
