// The photographs that have been taken.
#pragma once

#include <array>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <osp/base/runtime/timer.h>
#include <osp/graphics/bitmap.h>
#include <osp/graphics/font.h>
#include <osp/media/player.h>
#include <osp/ui/controls/button.h>
#include <osp/ui/controls/edit_area.h>
#include <osp/ui/controls/form.h>
#include <osp/ui/controls/frame.h>
#include <osp/ui/controls/label.h>
#include <osp/ui/controls/popup.h>
#include <osp/ui/i_action_event_listener.h>
#include <osp/ui/i_key_event_listener.h>
#include <osp/ui/i_touch_event_listener.h>
#include <osp/ui/weak_control.h>

#include "album/album_loader.h"
#include "album/album_pictures.h"
#include "app/model/camera_setting.h"
#include "app/model/photo_folders.h"

namespace Kivo {

class AlbumSheet;
class KivoWallForm;
class SnsShareForm;

/// Shows one photograph at a time, the newest first. A swipe turns over, a tap tells about the
/// photograph; it can be shared, sent and deleted. Sources: album_form.cpp (construction, the list,
/// the way back), album_sheets.cpp (what lies over the photograph), album_touch.cpp (touches and
/// the slide), album_drawing.cpp, album_actions.cpp (what the panels do), album_sharing.cpp (how a
/// photograph is shared). Loop thread only.
class AlbumForm : public Osp::Ui::Controls::Form,
                  public Osp::Ui::IActionEventListener,
                  public Osp::Ui::IKeyEventListener,
                  public Osp::Ui::ITouchEventListener,
                  public Osp::Base::Runtime::ITimerEventListener,
                  public Osp::Media::IPlayerEventListener {
  public:
    /// None is owned; all outlive the form. Decodes the bitmaps and opens the sound; the first
    /// failure is returned. The photographs follow with kRequestAlbumCreated.
    result Construct(Osp::Ui::Controls::Frame* frame, Osp::Ui::Controls::Form* mainForm,
                     SnsShareForm* shareForm, CameraSetting* setting);
    result OnInitializing() override;
    result OnTerminating() override;
    result OnDraw() override;

    /// Goes back to the camera screen, which removes this form. With `notify` the camera is
    /// restarted.
    result ReturnToMainForm(bool notify);

    bool OnUserEventReceivedN(long requestId, Osp::Base::Collection::IList* args) override;
    void OnActionPerformed(const Osp::Ui::Control& source, int actionId) override;
    void OnKeyPressed(const Osp::Ui::Control& source, Osp::Ui::KeyCode keyCode) override;
    void OnKeyReleased(const Osp::Ui::Control&, Osp::Ui::KeyCode) override {}
    void OnKeyLongPressed(const Osp::Ui::Control&, Osp::Ui::KeyCode) override {}
    void OnTouchPressed(const Osp::Ui::Control& source,
                        const Osp::Graphics::Point& position) override;
    void OnTouchMoved(const Osp::Ui::Control&, const Osp::Graphics::Point&) override {}
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
    /// The texts about a photograph; all empty while they are not shown.
    struct Information {
        Osp::Base::String title;
        Osp::Base::String date;
        Osp::Base::String size;
    };
    struct ColumnButton;
    static const std::array<ColumnButton, 4> kColumn;

    // album_form.cpp
    result ConstructFonts();
    result OpenSound();
    result AddColumn();
    void GoBack();
    void OpenWall();
    void BuildList();
    void LoadCurrent();
    void PrepareNeighbours();
    Osp::Base::String PathOf(const std::string& name) const;
    bool IsEmpty() const { return names_.empty(); }

    // album_sheets.cpp
    result AddSheets();
    result AddSheet(AlbumSheet*& sheet, const Osp::Graphics::Rectangle& place, int radius);
    result FillShareSheet();
    result FillDeleteSheet();
    result FillProgressSheet();
    result FillOutcomeSheet();
    result FillMessage();

    // album_touch.cpp
    bool IsBlocked() const { return isBusy_ || isSliding_ || IsSheetShown(); }
    bool IsSheetShown() const;
    void Tap();
    void Swipe(bool isForward);
    void EndSlide();
    Information DescribeCurrent() const;
    void ForgetTouch();

    // album_drawing.cpp
    result DrawPrint(Osp::Graphics::Canvas& canvas);
    result DrawFrame(Osp::Graphics::Canvas& canvas, const Osp::Graphics::Rectangle& window);
    result DrawBroken(Osp::Graphics::Canvas& canvas, int offset);
    result DrawEmpty(Osp::Graphics::Canvas& canvas);
    result DrawCounter(Osp::Graphics::Canvas& canvas);
    result DrawBadges(Osp::Graphics::Canvas& canvas);
    result DrawInformation(Osp::Graphics::Canvas& canvas, const Osp::Graphics::Rectangle& window);
    /// Enables the buttons that have something to act on, and says what is to be seen.
    void Refresh();

    // album_actions.cpp
    void OpenShare();
    void OpenDelete();
    void CloseSheets();
    void Cancel();
    void SendByMail();
    void DeleteCurrent();

    // album_sharing.cpp
    struct Outcome;
    void ShareWith(bool isTwitter);
    void SignIn(bool isTwitter);
    void SetProgressShown(bool shown);
    void AskForMessage(long request);
    void ShareWithMessage();
    void CancelMessage();
    result AskShareForm(long request, bool withPhotograph);
    /// Back from a sign-in, however that ended.
    void EndSignIn();
    void FinishShare(long requestId);

    Osp::Ui::Controls::Frame* frame_ = nullptr;    // not owned
    Osp::Ui::Controls::Form* mainForm_ = nullptr;  // not owned
    SnsShareForm* shareForm_ = nullptr;            // not owned
    CameraSetting* setting_ = nullptr;             // not owned
    AlbumPictures pictures_;
    Osp::Graphics::Font counterFont_;
    Osp::Graphics::Font titleFont_;
    Osp::Graphics::Font lineFont_;
    Osp::Graphics::Font brokenFont_;
    Osp::Graphics::Font emptyFont_;
    // Buttons and sheets are the form's children.
    std::array<Osp::Ui::Controls::Button*, 4> column_{};
    AlbumSheet* shareSheet_ = nullptr;
    AlbumSheet* deleteSheet_ = nullptr;
    Osp::Ui::Controls::Label* deleteThumbnail_ = nullptr;
    Osp::Ui::Controls::Label* deleteName_ = nullptr;
    AlbumSheet* progressSheet_ = nullptr;
    AlbumSheet* outcomeSheet_ = nullptr;
    Osp::Ui::Controls::Label* outcomeTitle_ = nullptr;
    Osp::Ui::Controls::Label* outcomeAdvice_ = nullptr;
    Osp::Ui::Controls::Popup message_;
    Osp::Ui::Controls::EditArea* messageArea_ = nullptr;  // the popup's
    long pendingRequest_ = 0;                             // of the message that is being written
    bool isSigningIn_ = false;                            // in the share form
    std::string sharing_;                      // name of what is being uploaded; empty: none
    Osp::Ui::WeakControl<KivoWallForm> wall_;  // made when it is first wanted; goes with the album

    const char* folder_ = kPhoneFolder;  // of the list
    std::vector<std::string> names_;     // the oldest first
    bool isListed_ = false;
    int index_ = 0;
    AlbumPhoto photo_;
    Osp::Graphics::Bitmap bitmap_;  // unconstructed: none
    AlbumLoader loader_;
    std::set<std::string> shared_;  // names, while the album is open
    Information information_;

    std::optional<Osp::Graphics::Point> pressPoint_;  // of a press in the photograph
    bool isPressRefused_ = false;  // a button of the column went down while all was blocked
    bool isBusy_ = false;
    bool isShareShown_ = false;
    bool isDeleteShown_ = false;
    bool isSliding_ = false;
    bool isForward_ = false;  // to the newer photograph
    int step_ = 0;
    Osp::Base::Runtime::Timer timer_;
    Osp::Media::Player player_;
};

}  // namespace Kivo
