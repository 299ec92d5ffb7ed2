// A sheet above the forms.
#pragma once

#include <osp/base/string.h>
#include <osp/graphics/dimension.h>
#include <osp/ui/container.h>

namespace Osp::Ui::Controls {

/// Belongs to nobody's tree: whoever makes it owns it. While it is shown it lies above all forms,
/// which are darkened, and below message boxes; it takes every touch, and of the keys the form gets
/// only that for going back. Events of the application go on. It stays through the background, and
/// when another form becomes current. The first edit area in it gets the focus when it opens.
///
/// It lies in the middle of the screen, and hangs from the upper edge while the keyboard of the
/// screen is shown.
class Popup : public Container {
  public:
    Popup() = default;
    ~Popup() override;

    /// Not shown at first. kInvalidArgument for an empty size and for one beyond the screen.
    result Construct(const Base::String& title, const Graphics::Dimension& size);
    const Base::String& GetTitle() const { return title_; }

    /// Opens it, above popups that are open already, or closes it.
    result SetShowState(bool shown) override;
    bool IsVisible() const override;

    result OnDraw() override;

  private:
    friend class Osp::Ui::Access;

    void Place();

    Base::String title_;
};

}  // namespace Osp::Ui::Controls
