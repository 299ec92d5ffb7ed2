// The layer of controls over the live preview.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

#include <osp/base/runtime/timer.h>
#include <osp/graphics/point.h>
#include <osp/media/image.h>
#include <osp/ui/controls/button.h>
#include <osp/ui/controls/label.h>
#include <osp/ui/controls/overlay_panel.h>
#include <osp/ui/i_action_event_listener.h>
#include <osp/ui/i_touch_event_listener.h>

#include "app/model/action_ids.h"
#include "app/model/camera_setting.h"
#include "ui/mask_panel.h"
#include "ui/overlay_pictures.h"

namespace Kivo {

/// Turns presses into actions (action_ids.h) for one listener, and drags on the zoom bar and the
/// effect roll into values of the shared settings. Sources: overlay.cpp (construction and the
/// operations), overlay_touch.cpp (touches, drags, animation). Loop thread only.
class Overlay : public Osp::Ui::Controls::OverlayPanel,
                public Osp::Ui::ITouchEventListener,
                public Osp::Base::Runtime::ITimerEventListener {
  public:
    /// Listener and setting are not owned and outlive the overlay. Decodes every bitmap and creates
    /// every control; the first failure is returned.
    result Construct(Osp::Ui::IActionEventListener* listener, CameraSetting* setting,
                     const Osp::Graphics::Rectangle& bounds);

    /// For flash, white balance, zoom bar, HDR and kCameraSelectionVisibility; success without
    /// effect for any other id.
    result SetButtonVisible(int id, bool visible);
    /// For the buttons that a running capture disables; success without effect for any other id.
    result SetButtonEnabled(int id, bool enable);
    /// False for ids that SetButtonEnabled does not know.
    bool IsButtonEnabled(int id) const;

    /// The shot counter of a multi-shot camera on the shutter button: the picture after n shots and
    /// the one under way. Other cameras get the plain shutter.
    void SetCaptureButton(int n);
    /// While disabled, no touch has any effect; disabling takes the finger off what it is on.
    void EnableKeys(bool enable);
    void SetFocused(bool focused);

    /// Lights the screen as a flash.
    void FlashEffect();
    void ShowHelp();
    void ShowCredit();
    void ShowProcessing();
    /// Resets the camera screen, finger and help included, covers it with black and shows it.
    void HideScreen();
    /// Removes the cover or the help.
    void ShowScreen();
    /// Refreshes every value picture from the settings.
    void UpdateOverlay();

    void OnTouchPressed(const Osp::Ui::Control& source,
                        const Osp::Graphics::Point& position) override;
    void OnTouchMoved(const Osp::Ui::Control& source,
                      const Osp::Graphics::Point& position) override;
    void OnTouchReleased(const Osp::Ui::Control& source,
                         const Osp::Graphics::Point& position) override;
    void OnTimerExpired(Osp::Base::Runtime::Timer& timer) override;

  private:
    struct ButtonLayout;
    static constexpr std::size_t kButtonCount = 11;
    static const std::array<ButtonLayout, kButtonCount> kButtons;

    // The state of one control that slides out and is dragged.
    struct Slider {
        bool extended = false;
        bool animating = false;
        bool armed = false;  // a drag may change the value
        bool moved = false;  // ... and has, since the press
        std::uint8_t pending = 0;
        std::uint8_t lastReported = 0;
    };

    // overlay.cpp
    result AddMask(Osp::Media::Image& decoder, const Osp::Graphics::Rectangle& bounds);
    result AddButton(const ButtonLayout& layout);
    result AddLabel(Osp::Ui::Controls::Label*& label, const Osp::Graphics::Rectangle& bounds,
                    const Osp::Graphics::Bitmap& bitmap, const char* name);
    Osp::Ui::Control* VisibilityTarget(int id) const;
    Osp::Ui::Controls::Button* FindButton(int id, unsigned flag) const;
    void SetPictures(Osp::Ui::Controls::Button& button, const Osp::Graphics::Bitmap& bitmap);
    void ShowHelpButtons(bool show);
    const Osp::Graphics::Bitmap& RollPicture(int effect) const;
    const Osp::Graphics::Bitmap& SelectionPicture() const;

    // overlay_touch.cpp
    void DropTouch();
    bool PreviewValue(const Osp::Ui::Control& source);
    void Preview(Osp::Ui::Controls::Button& button, IconType icon,
                 const Osp::Graphics::Bitmap& bitmap);
    void PressZoomBar();
    void PressEffectRoll();
    void PressMask(const Osp::Graphics::Point& position);
    void DragZoom(int dx);
    void DragEffect(int dy);
    void ReleaseZoomBar();
    void ReleaseEffectRoll();
    void PressSlider(Slider& slider, bool isAtRest, IconType icon, int value);
    void Drop(Slider& slider, int value);
    void Animate(Slider& slider);
    void EndDrag(Slider& slider);
    bool Step(Slider& slider, int& place, int stepPixels, int retracted, int extended);
    void PlaceSliders();

    Osp::Ui::IActionEventListener* listener_ = nullptr;  // not owned
    CameraSetting* setting_ = nullptr;                   // not owned
    // The controls are owned by their parents in the tree.
    MaskPanel* mask_ = nullptr;
    Osp::Ui::Controls::Button* capture_ = nullptr;
    Osp::Ui::Controls::Button* cameraType_ = nullptr;
    Osp::Ui::Controls::Button* selection_ = nullptr;
    Osp::Ui::Controls::Button* album_ = nullptr;
    Osp::Ui::Controls::Button* flash_ = nullptr;
    Osp::Ui::Controls::Button* whiteBalance_ = nullptr;
    Osp::Ui::Controls::Button* hdr_ = nullptr;
    Osp::Ui::Controls::Button* info_ = nullptr;
    Osp::Ui::Controls::Button* smallCapture_ = nullptr;
    Osp::Ui::Controls::Button* logo_ = nullptr;
    Osp::Ui::Controls::Button* settings_ = nullptr;
    Osp::Ui::Controls::Label* zoomBar_ = nullptr;
    Osp::Ui::Controls::Label* effectRoll_ = nullptr;
    Osp::Ui::Controls::Label* focusGuide_ = nullptr;
    OverlayPictures pictures_;
    std::unique_ptr<Osp::Base::Runtime::Timer> animationTimer_;
    Slider zoom_;
    Slider effect_;
    Osp::Graphics::Point pressPoint_;
    // What the finger shows a value of on the mask; not owned. Null once it is up or dropped.
    const Osp::Ui::Control* touched_ = nullptr;
    int zoomBarY_ = 0;
    int effectRollX_ = 0;
    bool keysEnabled_ = true;
};

}  // namespace Kivo
