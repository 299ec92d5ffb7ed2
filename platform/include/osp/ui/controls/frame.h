// The stack of the application's forms.
#pragma once

#include <osp/ui/container.h>
#include <osp/ui/controls/form.h>

namespace Osp::App {
class AppFrame;
}

namespace Osp::Ui::Controls {

/// The application's is that of its AppFrame, the only one that is on the screen. Holds the forms,
/// of which one is current: only that is on the screen and gets keys. Timers of the others run on.
/// Forms that are left at the end go in reverse order of adding.
class Frame : public Container {
  public:
    ~Frame() override;

    /// `control` is a form. Runs its OnInitializing and returns its failure, in which case the
    /// caller still owns it. Does not make it current.
    result AddControl(Control* control) override;
    /// Runs OnTerminating and deletes the form once the current event has been dispatched, so that
    /// a form may remove itself.
    result RemoveControl(Control& control) override;

    /// Draws `form` and brings it to the screen. kInvalidArgument for null, kObjectNotFound for a
    /// form that has not been added.
    result SetCurrentForm(Form* form);
    /// Null before the first is set, and after the current one has been removed.
    Form* GetCurrentForm() const { return current_; }

    /// Draws the current form.
    result Draw() override;
    /// Brings the current form to the screen.
    result Show() override;

  private:
    friend class App::AppFrame;
    friend class Osp::Ui::Access;

    Frame();

    Form* current_ = nullptr;  // one of the controls
};

}  // namespace Osp::Ui::Controls
