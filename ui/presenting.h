// Bringing a control to the screen.
#pragma once

#include <osp/ui/control.h>

namespace Kivo {

/// Draws the control as it is now and brings it to the screen, above its siblings if it is shown.
/// The first failure is returned.
result Present(Osp::Ui::Control& control);

/// Shows the control as well. What fails leaves the screen as it was, and nothing to be done.
void Reveal(Osp::Ui::Control& control);

}  // namespace Kivo
