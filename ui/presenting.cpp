#include "ui/presenting.h"

namespace Kivo {

result Present(Osp::Ui::Control& control) {
    const result r = control.Draw();
    return Osp::Failed(r) ? r : control.Show();
}

void Reveal(Osp::Ui::Control& control) {
    if (Osp::Succeeded(control.SetShowState(true))) (void)Present(control);
}

}  // namespace Kivo
