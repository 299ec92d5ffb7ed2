#include "ui/return_button.h"

#include <memory>

#include <osp/ui/controls/button.h>

#include "app/model/action_ids.h"

namespace Kivo {

result AddReturnButton(Osp::Ui::Controls::Form& form, Osp::Ui::IActionEventListener& listener,
                       const Osp::Graphics::Bitmap& normal, const Osp::Graphics::Bitmap& pressed) {
    auto button = std::make_unique<Osp::Ui::Controls::Button>();
    result r = button->Construct({715, 16, 69, 69});
    if (Osp::Failed(r)) return r;
    button->SetActionId(kActionReturn);
    button->SetName("Back to the camera");
    button->SetNormalBitmap(normal);
    button->SetPressedBitmap(pressed);
    button->AddActionEventListener(listener);
    r = form.AddControl(button.get());
    if (Osp::Succeeded(r)) (void)button.release();
    return r;
}

}  // namespace Kivo
