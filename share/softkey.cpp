#include "share/softkey.h"

namespace Kivo {

result AddSoftkey(Osp::Ui::Controls::Form& form, Osp::Ui::Controls::SoftkeyPosition position,
                  const Osp::Base::String& text, int actionId,
                  Osp::Ui::IActionEventListener& listener) {
    result r = form.SetSoftkeyText(position, text);
    if (Osp::Succeeded(r)) r = form.SetSoftkeyActionId(position, actionId);
    return Osp::Failed(r) ? r : form.AddSoftkeyActionListener(position, listener);
}

}  // namespace Kivo
