// The camera form of the application that a phone runs; its methods are the application's own and
// cannot be called from here, but its settings can.
#pragma once

#include <stdexcept>
#include <string_view>
#include <typeinfo>

#include "capture/main_form.h"
#include "osp/ui/access.h"
#include "osp/ui/screen.h"

namespace Kivo::Testing {

/// On the loop thread, whichever form is the current one.
inline CameraSetting& CurrentSettings() {
    const auto* const frame = Osp::Ui::Screen::Current().GetCurrentForm()->GetParent();
    for (const auto& form : Osp::Ui::Access::Children(*frame)) {
        const Osp::Ui::Control& control = *form;
        if (std::string_view(typeid(control).name()) == "N4Kivo8MainFormE") {
            return *static_cast<MainForm*>(form.get())->GetSetting();
        }
    }
    throw std::logic_error("there is no camera form");
}

}  // namespace Kivo::Testing
