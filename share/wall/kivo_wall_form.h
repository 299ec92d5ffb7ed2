// The photo wall.
#pragma once

#include <memory>

#include <osp/base/byte_buffer.h>
#include <osp/net/http/http_session.h>
#include <osp/net/http/http_transaction.h>
#include <osp/net/http/i_http_transaction_event_listener.h>
#include <osp/ui/controls/form.h>
#include <osp/ui/controls/frame.h>
#include <osp/ui/i_action_event_listener.h>
#include <osp/ui/i_key_event_listener.h>
#include <osp/web/controls/web.h>

namespace Kivo {

/// A mosaic of photographs that others have shared; touching one opens its page, and going back
/// leads to the mosaic and from there to the album. Closed and opened again, it shows the mosaic
/// that it showed last. What fails leaves what is shown. Loop thread only.
class KivoWallForm : public Osp::Ui::Controls::Form,
                     public Osp::Ui::IActionEventListener,
                     public Osp::Net::Http::IHttpTransactionEventListener,
                     public Osp::Web::Controls::ILoadingListener,
                     public Osp::Web::Controls::IWebDownloadListener,
                     public Osp::Ui::IKeyEventListener {
  public:
    using HttpSession = Osp::Net::Http::HttpSession;
    using HttpTransaction = Osp::Net::Http::HttpTransaction;

    /// Neither is owned; both are there as long as the wall is the current form.
    result Construct(Osp::Ui::Controls::Frame* frame, Osp::Ui::Controls::Form* albumForm);
    result OnInitializing() override;
    result OnTerminating() override;

    /// Shows the album, which must be in the frame. No page goes on here.
    result ReturnToAlbumForm();

    bool OnUserEventReceivedN(long requestId, Osp::Base::Collection::IList* args) override;
    void OnActionPerformed(const Osp::Ui::Control& source, int actionId) override;
    void OnKeyPressed(const Osp::Ui::Control& source, Osp::Ui::KeyCode keyCode) override;
    void OnKeyReleased(const Osp::Ui::Control&, Osp::Ui::KeyCode) override {}
    void OnKeyLongPressed(const Osp::Ui::Control&, Osp::Ui::KeyCode) override {}
    void OnTransactionReadyToRead(HttpSession& session, HttpTransaction& transaction,
                                  int availableBytes) override;
    void OnTransactionReadyToWrite(HttpSession&, HttpTransaction&, int) override {}
    void OnTransactionCompleted(HttpSession& session, HttpTransaction& transaction) override;
    void OnTransactionAborted(HttpSession& session, HttpTransaction& transaction,
                              result reason) override;
    void OnLoadingCompleted() override;
    Osp::Web::Controls::DecisionPolicy OnLoadingDecision(const Osp::Base::String&) override {
        return Osp::Web::Controls::DecisionPolicy::kRender;
    }
    void OnWebChunkedDataReceived(const Osp::Base::ByteBuffer&) override {}

  private:
    result AddWeb();
    void Fetch();
    void EndCall();
    void TakePage(const Osp::Base::String& page);
    /// The mosaic, or else the placeholder, which fetches one when it is there.
    void ShowWall();
    bool IsAway() const;

    Osp::Ui::Controls::Frame* frame_ = nullptr;     // not owned
    Osp::Ui::Controls::Form* albumForm_ = nullptr;  // not owned
    std::unique_ptr<HttpSession> session_;
    std::unique_ptr<HttpTransaction> transaction_;  // ends before its session
    Osp::Web::Controls::Web* web_ = nullptr;        // the form's
    std::unique_ptr<Osp::Base::ByteBuffer> page_;   // null: none yet
    bool isFirstPageLoaded_ = false;
};

}  // namespace Kivo
