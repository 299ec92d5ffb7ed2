// Signing in to the networks, and who is signed in.
#pragma once

#include <osp/base/string.h>
#include <osp/ui/controls/form.h>
#include <osp/ui/controls/frame.h>

namespace Kivo {

/// Keeps the tokens of the networks that the user is signed in to, and the message of the next
/// photograph that is shared. Nobody can be signed in by it yet: asked to, it goes back at once to
/// where it was asked, and nobody is signed in then; asked to share, it has failed. Loop thread
/// only.
class SnsShareForm : public Osp::Ui::Controls::Form {
  public:
    /// Neither is owned; both outlive the form. `mainForm` brings the other forms back.
    result Construct(Osp::Ui::Controls::Frame* frame, Osp::Ui::Controls::Form* mainForm);
    /// Reads the tokens that the registry keeps.
    result OnInitializing() override;

    void SetShareMessage(const Osp::Base::String& message) { shareMessage_ = message; }
    void ClearShareMessage() { shareMessage_ = {}; }

    /// Empty when nobody is signed in.
    Osp::Base::String GetTwToken() const { return twitterToken_; }
    Osp::Base::String GetFbToken() const { return facebookToken_; }
    /// Forget a token here; the registry is the caller's to change. Twitter's secret is kept, which
    /// means nothing without its token.
    void ResetTwToken() { twitterToken_ = {}; }
    void ResetFbToken() { facebookToken_ = {}; }

    /// Ask the main form for the form that was there before. Always succeed.
    result ReturnToAlbumForm();
    result ReturnToSettingForm();

    bool OnUserEventReceivedN(long requestId, Osp::Base::Collection::IList* args) override;

  private:
    Osp::Ui::Controls::Form* mainForm_ = nullptr;  // not owned
    Osp::Base::String facebookToken_;
    Osp::Base::String twitterToken_;
    Osp::Base::String twitterSecret_;
    Osp::Base::String shareMessage_;
};

}  // namespace Kivo
