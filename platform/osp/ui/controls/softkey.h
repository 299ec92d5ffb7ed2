// A key at the lower edge of the screen.
#pragma once

#include <osp/ui/controls/button.h>
#include <osp/ui/controls/form.h>

namespace Osp::Ui {

/// An ink pill in the corner of its position, not shown at first.
class Softkey : public Controls::Button {
  public:
    explicit Softkey(Controls::SoftkeyPosition position);

    result OnDraw() override;
};

}  // namespace Osp::Ui
