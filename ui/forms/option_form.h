// The chooser of camera type and effect.
#pragma once

#include <array>
#include <memory>
#include <optional>

#include <osp/base/runtime/timer.h>
#include <osp/graphics/point.h>
#include <osp/media/player.h>
#include <osp/ui/controls/form.h>
#include <osp/ui/controls/frame.h>
#include <osp/ui/i_action_event_listener.h>
#include <osp/ui/i_key_event_listener.h>
#include <osp/ui/i_touch_event_listener.h>

#include "app/model/camera_setting.h"
#include "ui/forms/carousel.h"
#include "ui/forms/option_pictures.h"

namespace Kivo {

/// Two carousels. A drag turns one of them by a place; a tap on one of the three cameras, or on the
/// return button, chooses and goes back to the camera screen. Sources: option_form.cpp
/// (construction, drawing, the way back), option_touch.cpp (touches and turns). Loop thread only.
class OptionForm : public Osp::Ui::Controls::Form,
                   public Osp::Ui::IActionEventListener,
                   public Osp::Ui::IKeyEventListener,
                   public Osp::Ui::ITouchEventListener,
                   public Osp::Base::Runtime::ITimerEventListener,
                   public Osp::Media::IPlayerEventListener {
  public:
    /// None is owned; all outlive the form. Decodes the bitmaps and opens the sounds; the first
    /// failure is returned.
    result Construct(Osp::Ui::Controls::Frame* frame, Osp::Ui::Controls::Form* mainForm,
                     CameraSetting* setting);
    result OnInitializing() override;
    result OnTerminating() override;
    result OnDraw() override;

    /// Goes back to the camera screen, which removes this form. With `save` the camera type is kept
    /// for the next run and the camera restarted.
    result ReturnToMainForm(bool save);

    bool OnUserEventReceivedN(long requestId, Osp::Base::Collection::IList* args) override;
    void OnActionPerformed(const Osp::Ui::Control& source, int actionId) override;
    void OnKeyPressed(const Osp::Ui::Control& source, Osp::Ui::KeyCode keyCode) override;
    void OnKeyReleased(const Osp::Ui::Control&, Osp::Ui::KeyCode) override {}
    void OnKeyLongPressed(const Osp::Ui::Control&, Osp::Ui::KeyCode) override {}
    void OnTouchPressed(const Osp::Ui::Control& source,
                        const Osp::Graphics::Point& position) override;
    void OnTouchMoved(const Osp::Ui::Control& source,
                      const Osp::Graphics::Point& position) override;
    void OnTouchReleased(const Osp::Ui::Control& source,
                         const Osp::Graphics::Point& position) override;
    void OnTimerExpired(Osp::Base::Runtime::Timer& timer) override;
    void OnPlayerOpened(result) override {}
    void OnPlayerEndOfClip() override {}
    void OnPlayerBuffering(int) override {}
    void OnPlayerErrorOccurred(result) override {}
    void OnPlayerInterrupted() override {}
    void OnPlayerReleased() override {}

  private:
    enum class Row { kCameras, kEffects };

    // option_form.cpp
    result OpenSounds();
    result DrawCameras(Osp::Graphics::Canvas& canvas);
    result DrawEffects(Osp::Graphics::Canvas& canvas);

    // option_touch.cpp
    void Reset();
    void ForgetTouch();
    void Touch(const Osp::Graphics::Point& position);
    void TapCamera(int x);
    void BeginTurn(bool toRight);
    void EndTurn();
    int StepsDue() const;
    /// Of a row that turns; 0 of one that rests.
    int StepOf(Row row) const { return isTurning_ && touchedRow_ == row ? step_ : 0; }

    Osp::Ui::Controls::Frame* frame_ = nullptr;    // not owned
    Osp::Ui::Controls::Form* mainForm_ = nullptr;  // not owned
    CameraSetting* setting_ = nullptr;             // not owned
    OptionPictures pictures_;
    std::unique_ptr<Osp::Base::Runtime::Timer> timer_;
    std::array<std::unique_ptr<Osp::Media::Player>, 2> players_;  // by row
    std::optional<Row> touchedRow_;  // until the touch is over, or the turn that it began
    Osp::Graphics::Point pressPoint_;
    bool hasMoved_ = false;  // the finger has turned a row, so what it does is no tap
    bool isTurning_ = false;
    bool toRight_ = false;
    int step_ = 0;
    long long turnBeganMs_ = 0;
};

}  // namespace Kivo
