// The camera screen.
#pragma once

#include <array>
#include <future>
#include <memory>

#include <osp/base/byte_buffer.h>
#include <osp/base/runtime/timer.h>
#include <osp/graphics/bitmap.h>
#include <osp/media/camera.h>
#include <osp/media/image.h>
#include <osp/media/player.h>
#include <osp/ui/controls/form.h>
#include <osp/ui/controls/frame.h>
#include <osp/ui/controls/label.h>
#include <osp/ui/controls/overlay_panel.h>
#include <osp/ui/i_action_event_listener.h>
#include <osp/ui/i_key_event_listener.h>
#include <osp/ui/weak_control.h>

#include "app/model/camera_setting.h"
#include "effects/dispatch.h"
#include "effects/effect_tables.h"
#include "effects/pixels/pixels.h"
#include "effects/pixels/scratch.h"

namespace Kivo {

class AlbumForm;
class Overlay;
class SettingForm;
class SnsShareForm;

/// Runs the camera, takes photographs and hands the screen over to the other forms. One class by
/// requirement; its sources are split by concern: main_form.cpp (construction), navigation.cpp,
/// session.cpp, sequence.cpp, series.cpp, actions.cpp, accumulation.cpp, storage.cpp, preview.cpp
/// and effect_members.cpp. What needs no form lives outside as pure functions. Operations return 0
/// or the code of the first platform call that failed, after which the remaining steps are skipped.
/// Loop thread only.
class MainForm : public Osp::Base::Runtime::ITimerEventListener,
                 public Osp::Media::ICameraEventListener,
                 public Osp::Media::IPlayerEventListener,
                 public Osp::Ui::Controls::Form,
                 public Osp::Ui::IActionEventListener,
                 public Osp::Ui::IKeyEventListener {
  public:
    MainForm();
    ~MainForm() override;

    /// `frame` is not owned and outlives the form. Creates the settings, the tables of the effects
    /// and the splash; the camera follows in OnInitializing.
    result Construct(Osp::Ui::Controls::Frame* frame);
    result OnInitializing() override;
    result OnTerminating() override;

    // Navigation. Ends a series under way and the session; the form that opens restarts it when it
    // returns. After a failure it is stopped.
    result GotoOptionForm();
    /// With `create` a new form; without, the one that is still there. kObjectNotFound when it is
    /// not.
    result GotoSettingForm(bool create);
    result GotoAlbumForm(bool create);

    // Session.
    result InitCamera(Osp::Media::CameraSelection selection);
    result InitOverlayPanel(Osp::Ui::Orientation orientation);
    /// Powers the camera on and starts the preview; with `restoreZoom` the camera is zoomed to the
    /// level of the settings. On failure the session is stopped and the user has been told.
    result Start(bool restoreZoom);
    result Stop();
    result DeinitCamera();
    void InitSound();
    void DeinitSound();

    // Capture sequence.
    void PreCapture();
    result StartCapture();
    /// Puts one frame of a multi-shot photograph into the accumulation buffer and counts it.
    /// kFailure, storing nothing, when the counter is above 3.
    result SaveToCache(const Osp::Base::ByteBuffer& buffer);
    /// Completes a photograph with its last frame and stores it as a numbered, registered JPEG,
    /// with `hdr` as its HDR version. Returns the encoder's failure after the user has been warned;
    /// older files are never harmed. `composed` false skips the effect; no caller does.
    result SaveToFile(Osp::Base::ByteBuffer* frame, bool composed, bool hdr);
    /// Hands a preview frame to the panel, converting it first where the MIX blend or the front
    /// camera's photograph needs that. Returns the panel's result, or 0 for a converted frame.
    result DrawPreview(Osp::Ui::Controls::OverlayPanel& panel, Osp::Base::ByteBuffer& data);

    // Effects, on raw pictures of the capture dimension (width x height x 3 bytes R, G, B).
    // ApplyEffect constructs `destination`; for the kernels it has been constructed.
    bool ApplyEffect(const Osp::Base::ByteBuffer* source, Osp::Base::ByteBuffer* destination);
    void BW(const Osp::Base::ByteBuffer* source, Osp::Base::ByteBuffer* destination);
    void Sepia(const Osp::Base::ByteBuffer* source, Osp::Base::ByteBuffer* destination);
    void Negative(const Osp::Base::ByteBuffer* source, Osp::Base::ByteBuffer* destination);
    void Colorize(const Osp::Base::ByteBuffer* source, Osp::Base::ByteBuffer* destination, int hue,
                  int saturation, float opacity);
    void Edge(const Osp::Base::ByteBuffer* source, Osp::Base::ByteBuffer* destination);
    void Circular(const Osp::Base::ByteBuffer* source, Osp::Base::ByteBuffer* destination,
                  bool concave);
    void Vignet(const Osp::Base::ByteBuffer* source, Osp::Base::ByteBuffer* destination, bool wide);
    void HDR(const Osp::Base::ByteBuffer* source, Osp::Base::ByteBuffer* destination);
    void Mix(const Osp::Base::ByteBuffer* source, Osp::Base::ByteBuffer* destination);
    void Mirror(const Osp::Base::ByteBuffer* source, Osp::Base::ByteBuffer* destination,
                bool secondary);
    void QShrink(const Osp::Base::ByteBuffer* source, Osp::Base::ByteBuffer* destination);
    void TiltShift(const Osp::Base::ByteBuffer* source, Osp::Base::ByteBuffer* destination);
    void OutFocus(const Osp::Base::ByteBuffer* source, Osp::Base::ByteBuffer* destination);

    bool OnUserEventReceivedN(long requestId, Osp::Base::Collection::IList* args) override;
    void OnActionPerformed(const Osp::Ui::Control& source, int actionId) override;
    void OnKeyPressed(const Osp::Ui::Control& source, Osp::Ui::KeyCode keyCode) override;
    void OnKeyReleased(const Osp::Ui::Control&, Osp::Ui::KeyCode) override {}
    void OnKeyLongPressed(const Osp::Ui::Control&, Osp::Ui::KeyCode) override {}
    void OnTimerExpired(Osp::Base::Runtime::Timer& timer) override;
    void OnCameraAutoFocused(bool completeCondition) override;
    void OnCameraCaptured(Osp::Base::ByteBuffer& capturedData, result r) override;
    void OnCameraPreviewed(Osp::Base::ByteBuffer& previewedData, result r) override;
    void OnCameraErrorOccurred(Osp::Media::CameraErrorReason) override {}
    void OnPlayerOpened(result) override {}
    void OnPlayerEndOfClip() override {}
    void OnPlayerBuffering(int) override {}
    void OnPlayerErrorOccurred(result) override {}
    void OnPlayerInterrupted() override {}
    void OnPlayerReleased() override {}

    /// Owned by the form.
    CameraSetting* GetSetting() const { return setting_.get(); }

  private:
    static constexpr int kAlbumSplash = 6;
    static constexpr int kSplashCount = 7;
    static constexpr int kEffectRollPlayer = 3;
    static constexpr int kPlayerCount = 4;

    // main_form.cpp
    void ReadCameraType();
    result AddShareForm();
    result LoadSplash();
    void RestoreSettings();
    void RestoreStorage();
    result InitScreen();

    // navigation.cpp
    result LeaveScreen();
    result OpenForm(Osp::Ui::Controls::Form& form);
    result CreateSettingForm();
    result CreateAlbumForm();
    void TellAlbum(long requestId);
    void WakeAfter(result opened);
    void WakeCamera();
    void LetGoOfCamera();
    void ShowSplash(int index);
    int SplashOfCameraType() const;

    // session.cpp
    result StartPreview();
    result ChoosePreviewSize();
    result ChooseCaptureSize();
    void RestoreZoom();
    void ApplyZoom();
    bool StartOrEnd(bool restoreZoom);
    bool IsPrimary() const;

    // sequence.cpp
    bool MayCapture() const;
    result EnsurePreview();
    result CaptureFromPreview();
    void BeginFrame();
    void RestartAfterSilence();
    void PlayShutterSound();
    std::unique_ptr<Osp::Base::ByteBuffer> Decode(const Osp::Base::ByteBuffer& picture);
    void TakeFrame(const std::unique_ptr<Osp::Base::ByteBuffer>& frame);
    void CacheOrStore(Osp::Base::ByteBuffer& frame);

    // series.cpp
    void EnableControls(bool enable);
    void FollowUp(int actionDelayMs, int quadDelayMs);
    void ShowShotCounter();
    void Settle();
    bool WaitsForSecondPress() const;
    void LoseFrame();
    void RefuseFrame();
    void EndSeries();
    void AbandonCapture();
    void AbandonCountdown();

    // actions.cpp
    void PlayRollSound();
    void SwapCameras();
    void ToggleFlash();
    void NextWhiteBalance();
    void ToggleHdr();

    // storage.cpp
    result ComposeAndStore(Osp::Base::ByteBuffer& frame, bool composed, bool hdr);
    result StorePicture(const Osp::Base::ByteBuffer& picture, const Osp::Base::String& folder,
                        const Osp::Base::String& description);
    void Register(const Osp::Base::String& path, const Osp::Base::String& description);

    // preview.cpp
    void ConvertFrame(Osp::Ui::Controls::OverlayPanel& panel, Osp::Base::ByteBuffer& data);
    void ShowBlend(Osp::Ui::Controls::OverlayPanel& panel, Effects::ConstPixels converted);
    void FinishSwitch();

    // effect_members.cpp
    Effects::ConstPixels View(const Osp::Base::ByteBuffer& buffer) const;
    Effects::Pixels View(Osp::Base::ByteBuffer& buffer) const;
    Effects::EffectJob MakeJob();
    void PrepareTables();

    Osp::Ui::Controls::Frame* frame_ = nullptr;  // not owned
    SnsShareForm* shareForm_ = nullptr;          // the frame's
    Osp::Ui::WeakControl<SettingForm> settingForm_;
    Osp::Ui::WeakControl<AlbumForm> albumForm_;
    std::unique_ptr<Osp::Media::Camera> camera_;  // null when none is constructed
    Overlay* overlay_ = nullptr;                  // owned by the form once added
    std::unique_ptr<Osp::Media::Image> image_;
    std::unique_ptr<CameraSetting> setting_;
    std::unique_ptr<Osp::Base::Runtime::Timer> timer_;       // one for every delay of the sequence
    std::unique_ptr<Osp::Ui::Controls::Label> ownedSplash_;  // until the form owns it
    Osp::Ui::Controls::Label* splash_ = nullptr;
    std::array<Osp::Graphics::Bitmap, kSplashCount> splashBitmaps_;  // by camera type; the album
    // Shutters of type 0, of type 1 and of all others, then the effect roll; null while stopped.
    std::array<std::unique_ptr<Osp::Media::Player>, kPlayerCount> players_;
    std::unique_ptr<Osp::Base::ByteBuffer> blend_;  // the converted preview; null until needed
    bool running_ = false;
    int panelWidth_ = 0;
    int panelHeight_ = 0;
    int frontCountdown_ = -1;  // -1 idle, else preview frames since the press on the front camera
    Osp::Base::ByteBuffer accumulation_;
    int shotCounter_ = 0;
    int lostFrames_ = 0;  // of the series, since its last good frame
    bool isFirstFrameShown_ = false;
    int frameCounter_ = 0;  // of preview frames since the last blend
    int appliedZoom_ = 0;
    bool isSwitchingCamera_ = false;
    bool focusGuard_ = false;  // from the end of focusing until the picture arrives
    Effects::EffectTables effectTables_;
    std::future<void> tableBuilder_;  // after what it works on: its end waits for the thread's
    Effects::Scratch scratch_;
};

}  // namespace Kivo
