// A box above the forms that takes all input until it has been answered.
#pragma once

#include <osp/base/string.h>
#include <osp/ui/container.h>
#include <osp/ui/controls/message_box.h>
#include <osp/ui/i_action_event_listener.h>

namespace Osp::Ui {

/// Covers the whole screen: a scrim, and on it a sheet with title, lines of text and at most one
/// button.
class ModalLayer : public Container, public IActionEventListener {
  public:
    ModalLayer(const Base::String& title, const Base::String& text,
               Controls::MessageBoxStyle style);

    /// Ends the waiting, once the current event has been dispatched. Any number of times.
    void Answer() { answered_ = true; }
    bool IsAnswered() const { return answered_; }

    result OnDraw() override;
    void OnActionPerformed(const Control& source, int actionId) override;

  private:
    void AddLine(const Base::String& text, int fontStyle, int size, int y);
    void AddButton();

    Graphics::Rectangle sheet_;
    bool answered_ = false;
};

}  // namespace Osp::Ui
