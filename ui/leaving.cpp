#include "ui/leaving.h"

#include "app/model/request_ids.h"

namespace Kivo {

result LeaveForMainForm(Osp::Ui::Controls::Frame& frame, Osp::Ui::Controls::Form& mainForm,
                        Osp::Ui::Controls::Form& leaving, std::optional<long> refresh) {
    if (refresh) (void)mainForm.SendUserEvent(*refresh, nullptr);
    result r = frame.SetCurrentForm(&mainForm);
    if (Osp::Failed(r)) return r;
    r = frame.RemoveControl(leaving);
    if (Osp::Failed(r) || !refresh) return r;
    r = frame.Draw();
    if (Osp::Failed(r)) return r;
    r = frame.Show();
    if (Osp::Failed(r)) return r;
    return frame.GetCurrentForm()->SendUserEvent(kRequestForeground, nullptr);
}

}  // namespace Kivo
