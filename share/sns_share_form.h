// Signing in to the networks, who is signed in, and sharing photographs with them.
#pragma once

#include <memory>
#include <span>

#include <osp/base/byte_buffer.h>
#include <osp/base/string.h>
#include <osp/io/file.h>
#include <osp/net/http/http_session.h>
#include <osp/net/http/http_transaction.h>
#include <osp/net/http/i_http_transaction_event_listener.h>
#include <osp/security/i_secret_key.h>
#include <osp/ui/controls/form.h>
#include <osp/ui/controls/frame.h>
#include <osp/ui/i_action_event_listener.h>
#include <osp/ui/i_key_event_listener.h>
#include <osp/web/controls/web.h>

#include "share/services.h"
#include "share/upload/multipart_form.h"

namespace Kivo {

/// Works through requests (app/model/request_ids.h) one at a time: each ends what the one before
/// had under way. Results go to the main form, which hands them to the album. Whatever fails
/// without a result leaves the last page on the screen, and "Close" gets away from it. Tokens are
/// kept in the registry. docs/sharing.md has the dialogues. Sources: sns_share_form.cpp
/// (construction, requests, the way back), oauth_members.cpp, twitter.cpp, facebook.cpp,
/// upload.cpp. Loop thread only.
class SnsShareForm : public Osp::Ui::Controls::Form,
                     public Osp::Ui::IActionEventListener,
                     public Osp::Net::Http::IHttpTransactionEventListener,
                     public Osp::Web::Controls::ILoadingListener,
                     public Osp::Web::Controls::IWebDownloadListener,
                     public Osp::Ui::IKeyEventListener {
  public:
    using HttpSession = Osp::Net::Http::HttpSession;
    using HttpTransaction = Osp::Net::Http::HttpTransaction;

    /// Neither is owned; both outlive the form. `mainForm` brings the other forms back.
    result Construct(Osp::Ui::Controls::Frame* frame, Osp::Ui::Controls::Form* mainForm);
    /// Reads the tokens that the registry keeps.
    result OnInitializing() override;
    result OnTerminating() override;

    void SetShareMessage(const Osp::Base::String& message) { shareMessage_ = message; }
    void ClearShareMessage() { shareMessage_ = {}; }

    /// Empty when nobody is signed in.
    Osp::Base::String GetTwToken() const { return twitterToken_; }
    Osp::Base::String GetFbToken() const { return facebookToken_; }
    /// Forget a token here; the registry is the caller's to change. Twitter's secret is kept, which
    /// means nothing without its token.
    void ResetTwToken() { twitterToken_ = {}; }
    void ResetFbToken() { facebookToken_ = {}; }

    /// Ask the main form for the form that was there before. Always succeed. Nothing of a page of
    /// the web is left here.
    result ReturnToAlbumForm();
    result ReturnToSettingForm();

    // What signs requests; see share/signing/oauth.h and share/text. Those with an N and
    // GenerateKey give away what they return, which is null without the memory.
    Osp::Base::ByteBuffer* ConvertStringToByteBuffer(const Osp::Base::String& text);
    Osp::Base::String String_urlEncode(const Osp::Base::String& text);
    /// Of the first 20 bytes; empty for null.
    Osp::Base::String String_base64Encode(const Osp::Base::ByteBuffer* digest);
    Osp::Base::String MakeSignatureBaseString(const Osp::Base::String& method,
                                              const Osp::Base::String& url,
                                              const Osp::Base::String& params);
    /// With the secret of the Twitter token that is held.
    Osp::Security::ISecretKey* GenerateKey();
    /// Deletes `key`, which may be null.
    Osp::Base::String GenerateSignature(Osp::Base::String& baseString,
                                        Osp::Security::ISecretKey* key);
    Osp::Base::String GetNonce();
    /// In seconds.
    long long GetTimeStamp();

    bool OnUserEventReceivedN(long requestId, Osp::Base::Collection::IList* args) override;
    void OnActionPerformed(const Osp::Ui::Control& source, int actionId) override;
    void OnKeyPressed(const Osp::Ui::Control& source, Osp::Ui::KeyCode keyCode) override;
    void OnKeyReleased(const Osp::Ui::Control&, Osp::Ui::KeyCode) override {}
    void OnKeyLongPressed(const Osp::Ui::Control&, Osp::Ui::KeyCode) override {}
    void OnTransactionReadyToRead(HttpSession& session, HttpTransaction& transaction,
                                  int availableBytes) override;
    void OnTransactionReadyToWrite(HttpSession& session, HttpTransaction& transaction,
                                   int recommendedBytes) override;
    void OnTransactionCompleted(HttpSession& session, HttpTransaction& transaction) override;
    void OnTransactionAborted(HttpSession& session, HttpTransaction& transaction,
                              result reason) override;
    void OnLoadingCompleted() override;
    Osp::Web::Controls::DecisionPolicy OnLoadingDecision(const Osp::Base::String& url) override;
    void OnWebChunkedDataReceived(const Osp::Base::ByteBuffer& chunk) override;

  private:
    struct Field {
        const char* name;
        Osp::Base::String value;
    };

    // sns_share_form.cpp
    result AddWeb();
    void ReadTokens();
    void BeginSignIn(bool isFromAlbum, const Osp::Base::Collection::IList* args);
    void TakePhotoPath(const Osp::Base::Collection::IList* args);
    bool Begin(long requestId, const Osp::Base::Collection::IList* args);
    void TellMainForm(long requestId);
    void ForgetTwitter();
    void Close();
    /// The session and transaction to come, which EndCall ends with all that belongs to them.
    result OpenPost(const Service& service, const char* path);
    void EndCall();
    void Succeed();
    void Fail();

    // twitter.cpp
    void SignInToTwitter();
    /// Posts to a path of Twitter's, signed: with the PIN, or else for a request token.
    void PostSigned(const char* path, bool hasPin);
    result Submit(const Osp::Base::String& parameters, const Osp::Base::String& authorization);
    void TakeTokens(const HttpTransaction& transaction);
    void AskTheUser();
    void OpenTwitterPage();
    void KeepTwitterTokens();
    void LeaveDenied();
    void GoOnWithPin();

    // facebook.cpp
    void SignInToFacebook();
    void OpenFacebookPage();
    void ReadFacebookPage();

    // upload.cpp
    void UploadToTwitpic();
    void UploadToFacebook();
    bool IsUploading() const;
    /// Opens the photograph, the body and the call that is to carry it.
    result BeginUpload(const Service& service, const char* path);
    result SubmitUpload(std::span<const Field> fields, const char* fileField);
    result WriteMore(HttpTransaction& transaction, int recommendedBytes);

    Osp::Ui::Controls::Frame* frame_ = nullptr;    // not owned
    Osp::Ui::Controls::Form* mainForm_ = nullptr;  // not owned
    long currentRequest_ = 0;                      // the last one; what is reported is for it
    bool isFromAlbum_ = false;
    Osp::Web::Controls::Web* web_ = nullptr;  // the form's
    Osp::Base::String photoPath_;
    Osp::Base::String facebookToken_;
    Osp::Base::String twitterToken_;  // while signing in, the request's
    Osp::Base::String twitterSecret_;
    Osp::Base::String twitterPin_;
    Osp::Base::String shareMessage_;
    std::unique_ptr<HttpSession> session_;
    std::unique_ptr<HttpTransaction> transaction_;  // ends before its session
    std::unique_ptr<MultipartForm> body_;           // during an upload
    std::unique_ptr<Osp::Io::File> photo_;          // during an upload
};

}  // namespace Kivo
