// The settings.
#pragma once

#include <array>
#include <cstddef>

#include <osp/base/runtime/timer.h>
#include <osp/graphics/bitmap.h>
#include <osp/graphics/font.h>
#include <osp/ui/controls/button.h>
#include <osp/ui/controls/form.h>
#include <osp/ui/controls/frame.h>
#include <osp/ui/i_action_event_listener.h>
#include <osp/ui/i_key_event_listener.h>

#include "app/model/camera_setting.h"

namespace Kivo {

class SnsShareForm;

/// Size of photographs, sounds, memory card and accounts. Every change is in the settings and in
/// the registry at once. Sources: setting_form.cpp (construction, drawing, the way back),
/// setting_actions.cpp (what the controls show and do). Loop thread only.
class SettingForm : public Osp::Ui::Controls::Form,
                    public Osp::Ui::IActionEventListener,
                    public Osp::Ui::IKeyEventListener,
                    public Osp::Base::Runtime::ITimerEventListener {
  public:
    static constexpr std::size_t kMostResolutions = 6;

    /// None is owned; all outlive the form. Decodes the bitmaps; the first failure is returned.
    result Construct(Osp::Ui::Controls::Frame* frame, Osp::Ui::Controls::Form* mainForm,
                     SnsShareForm* shareForm, CameraSetting* setting);
    result OnInitializing() override;
    result OnTerminating() override;
    result OnDraw() override;

    /// Goes back to the camera screen, which removes this form. With `changed` the camera is
    /// restarted.
    result ReturnToMainForm(bool changed);

    bool OnUserEventReceivedN(long requestId, Osp::Base::Collection::IList* args) override;
    void OnActionPerformed(const Osp::Ui::Control& source, int actionId) override;
    void OnKeyPressed(const Osp::Ui::Control& source, Osp::Ui::KeyCode keyCode) override;
    void OnKeyReleased(const Osp::Ui::Control&, Osp::Ui::KeyCode) override {}
    void OnKeyLongPressed(const Osp::Ui::Control&, Osp::Ui::KeyCode) override {}
    /// Looks after the memory card, which comes and goes without a word.
    void OnTimerExpired(Osp::Base::Runtime::Timer& timer) override;

  private:
    using Button = Osp::Ui::Controls::Button;

    enum Picture : std::size_t {
        kGround,
        kReturn,
        kReturnDown,
        kIcoResolution,
        kResolution,
        kResolutionChosen,
        kResolutionDown,
        kIcoSound,
        kIcoTwitter,
        kIcoFacebook,
        kIcoMemory,
        kOn,
        kOnDown,
        kOff,
        kOffDown,
        kPictureCount
    };
    static const std::array<const char*, kPictureCount> kResources;
    struct RowLayout;
    static const std::array<RowLayout, 5> kRows;

    // setting_form.cpp
    result LoadPictures();
    result AddButton(Button*& button, const Osp::Graphics::Rectangle& bounds, int actionId,
                     const char* name);
    result AddResolutionButtons();
    result AddToggles();

    // setting_actions.cpp
    void Refresh();
    void ShowResolutions();
    void ShowResolution(Button& button, bool isChosen, Picture pressed);
    void ChooseResolution(std::size_t index);
    void SetToggle(Button& toggle, bool isOn);
    void Toggle(Button& toggle, bool isOn);
    void ToggleSound();
    void ToggleMemory();
    void ToggleFacebook();
    void ToggleTwitter();
    void SignIn(long request);
    void ShowMemory();

    Osp::Ui::Controls::Frame* frame_ = nullptr;    // not owned
    Osp::Ui::Controls::Form* mainForm_ = nullptr;  // not owned
    SnsShareForm* shareForm_ = nullptr;            // not owned
    CameraSetting* setting_ = nullptr;             // not owned
    // The buttons are the form's children.
    std::array<Button*, kMostResolutions> resolutions_{};
    Button* sound_ = nullptr;
    Button* memory_ = nullptr;
    Button* twitter_ = nullptr;
    Button* facebook_ = nullptr;
    std::array<Osp::Graphics::Bitmap, kPictureCount> pictures_;
    Osp::Graphics::Font titleFont_;
    Osp::Graphics::Font hintFont_;
    Osp::Base::Runtime::Timer cardTimer_;
    bool isCardInUse_ = false;  // as the toggle shows it
};

}  // namespace Kivo
