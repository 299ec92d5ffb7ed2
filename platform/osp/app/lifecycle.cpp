// The screen and the input follow the host at once, the application hears of it as an event: what
// it is in the middle of, a message box above all, ends first. So foreground and background may be
// told to it late but never out of turn, and no input reaches it once the screen is gone.
//
// At the end the forms go before the application, which they may refer to, and the settings that it
// changed in its last moment are saved after both.
#include "osp/app/lifecycle.h"

#include "osp/base/event_loop.h"
#include "osp/ui/input.h"
#include "osp/ui/screen.h"

namespace Osp::App {

namespace {

void Later(void (Application::*callback)()) {
    Base::EventLoop::Current().Post(Base::EventClass::kApplication, [callback] {
        if (Application* application = Application::GetInstance()) (application->*callback)();
    });
}

}  // namespace

result Lifecycle::Run(ApplicationFactory factory) {
    if (application_) return result::kInvalidState;
    isTerminating_ = false;
    frame_ = Access::MakeFrame();
    application_.reset(factory());
    hasStarted_ = application_ && application_->OnAppInitializing(registry_);
    if (hasStarted_) {
        EnterForeground();
        Base::EventLoop::Current().RunUntil([this] { return isTerminating_; });
    }
    Finish();
    return hasStarted_ ? result::kSuccess : result::kFailure;
}

void Lifecycle::Finish() {
    if (isTerminating_) application_->OnAppTerminating(registry_, isUrgent_);
    frame_.reset();
    application_.reset();
    SetForeground(false);
    Ui::Input::Current().LetGo();
    (void)settings_.SaveUnsaved();
}

void Lifecycle::SetForeground(bool isForeground) {
    isForeground_ = isForeground;
    Ui::Screen::Current().SetForeground(isForeground);
    if (foregroundChanged_) foregroundChanged_(isForeground);
}

void Lifecycle::EnterForeground() {
    if (isForeground_ || !application_) return;
    SetForeground(true);
    Later(&Application::OnForeground);
}

void Lifecycle::EnterBackground() {
    if (!isForeground_ || !application_) return;
    SetForeground(false);
    Ui::Input::Current().LetGo();
    Ui::Screen::Current().AnswerModals();
    Later(&Application::OnBackground);
}

void Lifecycle::PassThroughBackground() {
    if (!isForeground_) return;
    EnterBackground();
    EnterForeground();
}

void Lifecycle::Terminate(bool urgent) {
    isTerminating_ = true;
    isUrgent_ = urgent;
    Ui::Screen::Current().AnswerModals();
}

}  // namespace Osp::App
