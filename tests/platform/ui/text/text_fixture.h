// A popup with an edit area and a button, to write in.
#pragma once

#include <memory>

#include <osp/ui/controls/edit_area.h>
#include <osp/ui/controls/popup.h>

#include "tests/support/ui_fixture.h"

namespace Osp::Ui {

class TextTest : public NotingUiTest {
  protected:
    TextTest() {
        EXPECT_EQ(popup_->Construct("Enter message", {480, 310}), result::kSuccess);
        EXPECT_EQ(area_->Construct({22, 56, 436, 154}), result::kSuccess);
        EXPECT_EQ(button_->Construct({80, 220, 150, 80}), result::kSuccess);
        EXPECT_EQ(popup_->AddControl(area_), result::kSuccess);
        EXPECT_EQ(popup_->AddControl(button_), result::kSuccess);
    }

    void Open() { EXPECT_EQ(popup_->SetShowState(true), result::kSuccess); }
    /// Keys of the screen's keyboard, by the middle of what is seen.
    static constexpr Graphics::Point kQ{40, 338}, kO{680, 338}, kA{80, 378}, kShift{60, 418},
        kDelete{740, 418}, kPage{60, 458}, kHide{640, 458}, kEnter{740, 458};

    std::string Text() const { return area_->GetText().ToUtf8(); }

    std::unique_ptr<Controls::Popup> popup_ = std::make_unique<Controls::Popup>();
    Controls::EditArea* area_ = new Controls::EditArea;  // the popup's, as the button
    Controls::Button* button_ = new Controls::Button;
};

}  // namespace Osp::Ui
