// One request and its answer.
#pragma once

#include <memory>

#include <osp/base/object.h>
#include <osp/base/result.h>
#include <osp/net/http/http_request.h>
#include <osp/net/http/http_response.h>
#include <osp/net/http/i_http_transaction_event_listener.h>

namespace Osp::Net::Http {

class Exchange;

/// Opened by a session. Whoever has opened it may delete it at any time, which cancels it without a
/// report. Loop thread only.
class HttpTransaction : public Base::Object {
  public:
    ~HttpTransaction() override;
    HttpTransaction(const HttpTransaction&) = delete;
    HttpTransaction& operator=(const HttpTransaction&) = delete;

    /// One; not owned, outlives the transaction. Another replaces it.
    void SetListener(IHttpTransactionEventListener* listener) { listener_ = listener; }
    /// Asks for reports that more of the body can be sent; before Submit. The header then says how
    /// long the body is in "Content-Length".
    void EnableReadyToWrite() { reportsReadyToWrite_ = true; }

    HttpRequest& GetRequest() { return request_; }
    const HttpResponse& GetResponse() const { return response_; }

    /// Sends the request; how it goes is reported from the loop, also that the device has no
    /// network (kUnsupported) or that a body may not go there in the clear (kPermissionDenied).
    /// kInvalidState without a URI and when submitted already. kInvalidArgument, sending nothing,
    /// for a GET with a body, and for a "Content-Length" that is no decimal number, less than has
    /// been written or, without reports of writing, more; a body needs none without reports.
    result Submit();

  private:
    friend class HttpSession;
    friend class Exchange;

    explicit HttpTransaction(HttpSession& session);

    HttpSession& session_;                               // deletes this when it ends
    IHttpTransactionEventListener* listener_ = nullptr;  // not owned
    HttpRequest request_;
    HttpResponse response_;
    bool reportsReadyToWrite_ = false;
    std::unique_ptr<Exchange> exchange_;  // null before Submit
};

}  // namespace Osp::Net::Http
