// An application that does nothing but show pages: the soft key "Next" takes the next of the steps
// in the environment variable BROWSER_STEPS, one a line. What it hears stands in the form's name.
#include <cstdlib>
#include <map>
#include <memory>
#include <sstream>
#include <string>

#include <osp/app/app_frame.h>
#include <osp/app/application.h>
#include <osp/base/collection/array_list.h>
#include <osp/ui/controls/form.h>
#include <osp/ui/controls/frame.h>
#include <osp/ui/controls/message_box.h>
#include <osp/web/controls/web.h>

namespace {

using namespace Osp;
using Base::String;
using Ui::Controls::SoftkeyPosition;
using Web::Controls::DecisionPolicy;

class BrowserForm : public Ui::Controls::Form,
                    private Ui::IActionEventListener,
                    private Web::Controls::ILoadingListener,
                    private Web::Controls::IWebDownloadListener {
  public:
    result Construct() {
        if (const char* const steps = std::getenv("BROWSER_STEPS")) steps_.str(steps);
        return Form::Construct(Ui::Controls::kFormStyleSoftkeys);
    }
    result OnInitializing() override {
        for (const auto& [position, text] :
             {std::pair{SoftkeyPosition::kLeft, "Next"}, {SoftkeyPosition::kRight, "Box"}}) {
            (void)SetSoftkeyText(position, text);
            (void)SetSoftkeyActionId(position, static_cast<int>(position));
            (void)AddSoftkeyActionListener(position, *this);
        }
        Open();
        return result::kSuccess;
    }
    result OnDraw() override {
        const std::unique_ptr<Graphics::Canvas> canvas(GetCanvasN());
        return canvas->FillRectangle({0x9A, 0x8D, 0x72, 255}, {0, 0, 800, 480});
    }

  private:
    void Open() {
        auto web = std::make_unique<Web::Controls::Web>();
        (void)web->Construct({0, 0, 800, 480});
        web->SetLoadingListener(this);
        web->SetDownloadListener(this);
        web_ = web.get();
        (void)AddControl(web.release());
    }
    void Note(const std::string& what) { SetName(String(std::string_view(what))); }

    void Show(const std::string& html) {
        Base::ByteBuffer bytes;
        (void)bytes.Construct(static_cast<int>(html.size()));
        std::copy(html.begin(), html.end(), bytes.GetPointer());
        (void)web_->LoadData("localhost", bytes, "text/html", "UTF-8");
    }
    void Take(const std::string& step) {
        const std::size_t space = step.find(' ');
        const std::string verb = step.substr(0, space);
        const std::string rest = space == std::string::npos ? "" : step.substr(space + 1);
        if (verb == "url") (void)web_->LoadUrl(String(std::string_view(rest)));
        if (verb == "data") Show(rest);
        if (verb == "twice") Show("given up"), Show(rest);
        if (verb == "many") renders_ = 0, Show("0");
        if (verb == "take") takes_ = rest == "on";
        if (verb == "scripts") web_->SetScriptsEnabled(rest == "on");
        if (verb == "zoom") (void)web_->SetZoomLevel(std::atof(rest.c_str()));
        if (verb == "back") web_->GoBack();
        if (verb == "clear") web_->Clear();
        if (verb == "delete") (void)RemoveControl(*web_);
        if (verb == "open") Open();
    }
    void OnActionPerformed(const Control&, int action) override {
        if (action != 0) {
            Ui::Controls::MessageBox box;
            (void)box.Construct("", "A box", Ui::Controls::MessageBoxStyle::kOk, 0);
            return (void)box.ShowAndWait();
        }
        std::string step;
        if (std::getline(steps_, step)) Take(step);
    }
    void OnLoadingCompleted() override {
        ++completed_;
        if (renders_ >= 0 && ++renders_ < kRenders) return Show(std::to_string(renders_));
        renders_ = -1;
        Note("completed " + std::to_string(completed_) + " " + web_->GetUrl().ToUtf8() +
             (web_->CanGoBack() ? " back" : ""));
    }
    DecisionPolicy OnLoadingDecision(const String&) override {
        return takes_ ? DecisionPolicy::kDownload : DecisionPolicy::kRender;
    }
    void OnWebChunkedDataReceived(const Base::ByteBuffer& chunk) override {
        const auto bytes = chunk.Remaining();
        const std::string text(bytes.begin(), bytes.end());
        chunks_ += " " + std::to_string(text.size());
        Note("chunks" + chunks_ + " " + text.substr(0, 60));
    }

    static constexpr int kRenders = 500;

    Web::Controls::Web* web_ = nullptr;  // the form's
    std::istringstream steps_;
    bool takes_ = false;
    int completed_ = 0;
    int renders_ = -1;  // how many of many there have been
    std::string chunks_;
};

class Browser : public App::Application {
  public:
    static Application* CreateInstance() { return new Browser; }
    bool OnAppInitializing(App::AppRegistry&) override {
        Ui::Controls::Frame* const frame = GetAppFrame()->GetFrame();
        auto form = std::make_unique<BrowserForm>();
        if (Failed(form->Construct()) || Failed(frame->AddControl(form.get()))) return false;
        return Succeeded(frame->SetCurrentForm(form.release()));
    }
    bool OnAppTerminating(App::AppRegistry&, bool) override { return true; }
    void OnForeground() override {}
    void OnBackground() override {}
    void OnLowMemory() override {}
    void OnBatteryLevelChanged(System::BatteryLevel) override {}
};

}  // namespace

extern "C" __attribute__((visibility("default"))) int OspMain(int, char**) {
    Base::Collection::ArrayList none;
    if (Failed(none.Construct(1))) return 1;
    return Succeeded(App::Application::Execute(Browser::CreateInstance, &none)) ? 0 : 1;
}
