// The keys below the pages of the web.
#pragma once

#include <osp/base/string.h>
#include <osp/ui/controls/form.h>
#include <osp/ui/i_action_event_listener.h>

namespace Kivo {

/// Shows a soft key of `form`, which has them. `listener` outlives the form.
result AddSoftkey(Osp::Ui::Controls::Form& form, Osp::Ui::Controls::SoftkeyPosition position,
                  const Osp::Base::String& text, int actionId,
                  Osp::Ui::IActionEventListener& listener);

}  // namespace Kivo
