// The module: an engine whose views lie in the window.
#include <memory>
#include <optional>
#include <string>

#include "backends/web/authorities.h"
#include "backends/web/page_view.h"
#include "backends/web/private_folder.h"
#include "backends/web/sandbox.h"
#include "backends/web/web_module.h"

namespace Osp::Web {

namespace {

class Engine : public WebEngine {
  public:
    Engine(Ui::Window& window, const EngineOptions& options)
        : window_(window), authorities_(options.authorityFile) {}

    ~Engine() override {
        if (context_) RemoveSandboxTraces();
    }

    std::unique_ptr<WebView> MakeView(WebViewClient& client, std::string& whyNot) override {
        if (!whyNoSandbox_) whyNoSandbox_ = WhyNoSandbox();
        if (!whyNoSandbox_->empty()) {
            whyNot = *whyNoSandbox_;
            return nullptr;
        }
        if (!context_) {
            ForgetMissingBus();
            PrivateFolder::RemoveOrphans();
            context_.reset(webkit_web_context_new());
        }
        return std::make_unique<PageView>(window_, context_.get(), authorities_, client);
    }

  private:
    Ui::Window& window_;
    Authorities authorities_;
    std::optional<std::string> whyNoSandbox_;                // once tried
    Base::Owner<WebKitWebContext, g_object_unref> context_;  // null before the first view
};

}  // namespace

}  // namespace Osp::Web

extern "C" Osp::Web::WebEngine* KivoMakeWebEngine(Osp::Ui::Window& window,
                                                  const Osp::Web::EngineOptions& options) {
    return new Osp::Web::Engine(window, options);
}
