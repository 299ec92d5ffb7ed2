// A question that the album asks, over everything else.
#pragma once

#include <osp/base/string.h>
#include <osp/graphics/bitmap.h>
#include <osp/graphics/rectangle.h>
#include <osp/ui/controls/label.h>
#include <osp/ui/controls/panel.h>
#include <osp/ui/i_action_event_listener.h>
#include <osp/ui/i_touch_event_listener.h>

namespace Kivo {

enum class SheetButtonKind { kPaper, kRed, kInk };

/// Adds a button to `sheet`, with `place` in it. An unconstructed `icon` leaves the text in the
/// middle. `listener` outlives the sheet.
result AddSheetButton(Osp::Ui::Container& sheet, SheetButtonKind kind,
                      const Osp::Graphics::Rectangle& place, const Osp::Base::String& text,
                      const Osp::Graphics::Bitmap& icon, int actionId,
                      Osp::Ui::IActionEventListener& listener);

/// Dims the whole screen and takes every touch beside its buttons. Hidden at first.
class AlbumSheet : public Osp::Ui::Controls::Panel, public Osp::Ui::ITouchEventListener {
  public:
    /// The sheet's place on the screen.
    result Construct(const Osp::Graphics::Rectangle& sheet, int radius);

    /// Places are on the screen; `size` is the font's. What is added is the sheet's; null when it
    /// cannot be. A line may be longer than its rectangle, which then cuts it off.
    Osp::Ui::Controls::Label* AddLine(const Osp::Graphics::Rectangle& place,
                                      const Osp::Base::String& text, int style, int size);
    Osp::Ui::Controls::Label* AddCentredLine(const Osp::Graphics::Rectangle& place,
                                             const Osp::Base::String& text, int size);
    result OnDraw() override;

    // What goes down beside the buttons is nobody's.
    void OnTouchPressed(const Osp::Ui::Control&, const Osp::Graphics::Point&) override {}
    void OnTouchMoved(const Osp::Ui::Control&, const Osp::Graphics::Point&) override {}
    void OnTouchReleased(const Osp::Ui::Control&, const Osp::Graphics::Point&) override {}

  private:
    Osp::Graphics::Rectangle sheet_;
    int radius_ = 0;
};

}  // namespace Kivo
