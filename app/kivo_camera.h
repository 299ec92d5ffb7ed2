// The application object: from the platform's life cycle to the current form.
#pragma once

#include <osp/app/application.h>
#include <osp/system/i_screen_event_listener.h>
#include <osp/ui/controls/frame.h>

namespace Kivo {

class MainForm;

class KIVOCamera : public Osp::App::Application, public Osp::System::IScreenEventListener {
  public:
    /// The caller owns the new object.
    static Osp::App::Application* CreateInstance();

    /// Builds the camera form and makes it current. False, leaving no form behind, when that fails.
    bool OnAppInitializing(Osp::App::AppRegistry& registry) override;
    bool OnAppTerminating(Osp::App::AppRegistry& registry, bool urgent) override;
    /// Wakes the camera form, and only that: a form in front of it wakes it when it returns.
    void OnForeground() override;
    /// Tells whichever form is current, unlike OnForeground.
    void OnBackground() override;
    void OnLowMemory() override {}
    void OnBatteryLevelChanged(Osp::System::BatteryLevel) override {}
    void OnScreenOn() override {}
    void OnScreenOff() override {}

  private:
    MainForm* mainForm_ = nullptr;               // owned by the frame once added
    Osp::Ui::Controls::Frame* frame_ = nullptr;  // not owned
};

}  // namespace Kivo
