// A full screen of the application.
#pragma once

#include <array>

#include <osp/base/string.h>
#include <osp/ui/container.h>
#include <osp/ui/i_action_event_listener.h>
#include <osp/ui/orientation.h>

namespace Osp::Ui::Controls {

class Button;

/// A form of this style has soft keys.
inline constexpr unsigned kFormStyleSoftkeys = 0x10;

/// The keys at the lower edge of the screen, by their numbers.
enum class SoftkeyPosition { kLeft = 0, kRight = 1 };

/// Shown and given keys by its frame, which owns it once it has been added.
///
/// Soft keys lie above all that the form holds and below popups and message boxes. One is shown
/// while it has a text. It acts like a button: by touch, by Enter with the ring of the keyboard's
/// focus on it, and by its own key, KeyCode::kSoftKey0 or kSoftKey1, when that comes up; the form's
/// key listeners hear of that key only while its soft key is not shown.
class Form : public Container {
  public:
    /// Covers the screen. `style` is 0 or kFormStyleSoftkeys; kUnsupported, leaving the form
    /// unconstructed, for anything else.
    result Construct(unsigned style);

    // kInvalidState, changing nothing, for a form without soft keys:

    /// One line; empty, as at first, for a soft key that is not shown.
    result SetSoftkeyText(SoftkeyPosition position, const Base::String& text);
    /// Told to the listeners as a button's; 0 at first.
    result SetSoftkeyActionId(SoftkeyPosition position, int actionId);
    /// Not owned; outlives the form; adding one twice has no effect.
    result AddSoftkeyActionListener(SoftkeyPosition position, IActionEventListener& listener);

    /// kUnsupported for anything but landscape: the screen does not turn.
    result SetOrientation(Orientation orientation);
    Orientation GetOrientation() const { return orientation_; }

    bool IsVisible() const override;

  private:
    friend class Osp::Ui::Access;

    Button* SoftkeyAt(SoftkeyPosition position) const;

    Orientation orientation_ = Orientation::kNone;
    std::array<Button*, 2> softkeys_{};  // the container's; null without them
};

}  // namespace Osp::Ui::Controls
