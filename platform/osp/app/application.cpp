#include <osp/app/application.h>

#include "osp/app/lifecycle.h"

namespace Osp::App {

result Application::Execute(ApplicationFactory factory, const Base::Collection::IList*) {
    if (factory == nullptr) return result::kInvalidArgument;
    return Lifecycle::Current().Run(factory);
}

Application* Application::GetInstance() {
    return Lifecycle::IsInstalled() ? Lifecycle::Current().GetApplication() : nullptr;
}

result Application::Terminate() {
    Lifecycle::Current().Terminate(false);
    return result::kSuccess;
}

AppFrame* Application::GetAppFrame() const {
    return Lifecycle::Current().GetFrame();
}

AppRegistry* Application::GetAppRegistry() const {
    return &Lifecycle::Current().GetRegistry();
}

}  // namespace Osp::App
