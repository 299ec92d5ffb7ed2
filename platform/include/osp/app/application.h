// The running application.
#pragma once

#include <osp/app/app_frame.h>
#include <osp/app/app_registry.h>
#include <osp/base/collection/ilist.h>
#include <osp/base/result.h>
#include <osp/system/battery_level.h>

namespace Osp::App {

class Application;
/// Makes the application object; the caller owns it.
using ApplicationFactory = Application* (*)();

/// Its life: OnAppInitializing, then foreground and background strictly alternating, beginning with
/// foreground, then OnAppTerminating and the end of the remaining forms. Loop thread only.
class Application {
  public:
    virtual ~Application() = default;

    /// Creates the application and runs the loop until it terminates. kFailure when
    /// OnAppInitializing returned false, kInvalidState when one runs already. `arguments` stay the
    /// caller's.
    static result Execute(ApplicationFactory factory, const Base::Collection::IList* arguments);

    /// Null outside Execute.
    static Application* GetInstance();

    /// Ends the application once the current event has been dispatched; message boxes are answered.
    /// Always succeeds.
    result Terminate();
    /// Owned by the platform; null outside Execute.
    AppFrame* GetAppFrame() const;
    AppRegistry* GetAppRegistry() const;

    /// Builds the application; false ends it without any further call but the destructor.
    virtual bool OnAppInitializing(AppRegistry& registry) = 0;
    /// The last call before the forms end. `urgent` when the system insists. The answer changes
    /// nothing: the application ends.
    virtual bool OnAppTerminating(AppRegistry& registry, bool urgent) = 0;
    /// The application is on the screen, or no longer; from the loop.
    virtual void OnForeground() = 0;
    virtual void OnBackground() = 0;
    /// Never called by this device, which tells neither.
    virtual void OnLowMemory() = 0;
    virtual void OnBatteryLevelChanged(System::BatteryLevel level) = 0;
};

}  // namespace Osp::App
