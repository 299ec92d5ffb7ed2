// How a form gives the screen back to the camera.
#pragma once

#include <optional>

#include <osp/ui/controls/form.h>
#include <osp/ui/controls/frame.h>

namespace Kivo {

/// Makes `mainForm` current and removes `leaving` from the frame, which deletes it once the current
/// event is over. With `refresh`, the main form gets that request first, and afterwards wakes the
/// camera; without, the camera deliberately stays as it is. Returns the first failure.
result LeaveForMainForm(Osp::Ui::Controls::Frame& frame, Osp::Ui::Controls::Form& mainForm,
                        Osp::Ui::Controls::Form& leaving, std::optional<long> refresh);

}  // namespace Kivo
