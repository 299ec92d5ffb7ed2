// The red button that leads back to the camera.
#pragma once

#include <osp/graphics/bitmap.h>
#include <osp/ui/controls/form.h>
#include <osp/ui/i_action_event_listener.h>

namespace Kivo {

/// Adds it to `form`, at the same place on every form; its action is kActionReturn. `listener` is
/// not owned and outlives the form.
result AddReturnButton(Osp::Ui::Controls::Form& form, Osp::Ui::IActionEventListener& listener,
                       const Osp::Graphics::Bitmap& normal, const Osp::Graphics::Bitmap& pressed);

}  // namespace Kivo
