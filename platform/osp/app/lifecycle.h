// The life of the application as the host steers it.
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include <osp/app/app_frame.h>
#include <osp/app/app_registry.h>
#include <osp/app/application.h>

#include "osp/app/access.h"
#include "osp/app/registry_file.h"
#include "osp/base/service.h"

namespace Osp::App {

/// Foreground and background strictly alternate, whatever the host reports. Loop thread only.
class Lifecycle : public Service<Lifecycle> {
  public:
    /// `settings` is not owned and outlives this object: what the application's registry keeps.
    explicit Lifecycle(RegistryFile& settings)
        : settings_(settings), registry_(Access::MakeRegistry(settings)) {}

    /// Runs an application from its creation to its end; see Application::Execute.
    result Run(ApplicationFactory factory);

    /// `changed` is told at once when the application comes to the foreground or leaves it.
    void WatchForeground(std::function<void(bool isForeground)> changed) {
        foregroundChanged_ = std::move(changed);
    }

    /// The window is shown, or hidden (minimised, locked, suspended). Going to the background
    /// answers every message box and takes the finger off the screen: nothing is released or acted
    /// on. Repeating a state does nothing.
    void EnterForeground();
    void EnterBackground();
    /// Tells an application in the foreground of the background and of the foreground again, as
    /// after another program's turn. Nothing in the background, where it has been told.
    void PassThroughBackground();
    /// Ends the application as a user would. `urgent` tells it that the system insists.
    void Terminate(bool urgent);

    /// Whether the last application that ran got past its OnAppInitializing.
    bool HasStarted() const { return hasStarted_; }

    Application* GetApplication() const { return application_.get(); }
    AppFrame* GetFrame() const { return frame_.get(); }
    AppRegistry& GetRegistry() { return registry_; }
    const RegistryFile& GetSettings() const { return settings_; }

  private:
    void Finish();
    void SetForeground(bool isForeground);

    RegistryFile& settings_;
    AppRegistry registry_;
    std::unique_ptr<Application> application_;
    std::unique_ptr<AppFrame> frame_;
    std::function<void(bool)> foregroundChanged_;  // may be empty
    bool hasStarted_ = false;
    bool isForeground_ = false;
    bool isTerminating_ = false;
    bool isUrgent_ = false;
};

}  // namespace Osp::App
