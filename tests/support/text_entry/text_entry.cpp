// An application that does nothing but ask for a message.
#include <memory>

#include <osp/app/app_frame.h>
#include <osp/app/application.h>
#include <osp/base/collection/array_list.h>
#include <osp/ui/controls/button.h>
#include <osp/ui/controls/edit_area.h>
#include <osp/ui/controls/form.h>
#include <osp/ui/controls/frame.h>
#include <osp/ui/controls/popup.h>

namespace {

using namespace Osp;
using Graphics::Color;

enum Action { kOpen = 1, kDone = 2 };

class Sheet : public Ui::Controls::Button {
  public:
    explicit Sheet(Color ground) : ground_(ground) {}
    result OnDraw() override {
        const std::unique_ptr<Graphics::Canvas> canvas(GetCanvasN());
        result r = canvas->Clear();
        const auto [x, y, width, height] = GetBounds();
        if (Succeeded(r)) r = canvas->FillRoundRectangle(ground_, {0, 0, width, height}, 14);
        return Failed(r) ? r : DrawText(*canvas);
    }

  private:
    Color ground_;
};

class MessageForm : public Ui::Controls::Form, private Ui::IActionEventListener {
  public:
    result OnInitializing() override {
        AddButton(*this, {716, 226, 68, 68}, "Write", kOpen, {0xFA, 0xF5, 0xEA, 255});
        (void)popup_.Construct("Enter message", {480, 310});
        auto area = std::make_unique<Ui::Controls::EditArea>();
        (void)area->Construct({22, 56, 436, 154});
        (void)popup_.AddControl(area.release());
        AddButton(popup_, {80, 220, 150, 80}, "Done", kDone, {0xCF, 0x3A, 0x20, 255});
        return popup_.SetShowState(true);
    }
    result OnDraw() override {
        const std::unique_ptr<Graphics::Canvas> canvas(GetCanvasN());
        return canvas->FillRectangle({0x9A, 0x8D, 0x72, 255}, {0, 0, 800, 480});
    }

  private:
    void AddButton(Ui::Container& to, const Graphics::Rectangle& bounds, const char* text,
                   Action action, Color ground) {
        auto button = std::make_unique<Sheet>(ground);
        (void)button->Construct(bounds);
        button->SetText(text);
        button->SetActionId(action);
        button->AddActionEventListener(*this);
        (void)to.AddControl(button.release());
    }
    void OnActionPerformed(const Ui::Control&, int action) override {
        (void)popup_.SetShowState(action == kOpen);
    }

    Ui::Controls::Popup popup_;
};

class TextEntry : public App::Application {
  public:
    static Application* CreateInstance() { return new TextEntry; }
    bool OnAppInitializing(App::AppRegistry&) override {
        Ui::Controls::Frame* const frame = GetAppFrame()->GetFrame();
        auto form = std::make_unique<MessageForm>();
        if (Failed(form->Construct(0)) || Failed(frame->AddControl(form.get()))) return false;
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
    return Succeeded(App::Application::Execute(TextEntry::CreateInstance, &none)) ? 0 : 1;
}
