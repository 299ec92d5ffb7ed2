// Hears how a transaction goes.
#pragma once

#include <osp/base/result.h>

namespace Osp::Net::Http {

class HttpSession;
class HttpTransaction;

/// From the loop. Session and transaction may be deleted inside any of these; a transaction that
/// is reported completed or aborted does nothing any more.
class IHttpTransactionEventListener {
  public:
    virtual ~IHttpTransactionEventListener() = default;
    /// Once, before the completion, when the whole body of the answer is there and not empty.
    virtual void OnTransactionReadyToRead(HttpSession& session, HttpTransaction& transaction,
                                          int availableBytes) = 0;
    /// More of the body can be sent, best `recommendedBytes` of it. Nothing more is reported before
    /// the listener has written, or when all that Content-Length promises has been.
    virtual void OnTransactionReadyToWrite(HttpSession& session, HttpTransaction& transaction,
                                           int recommendedBytes) = 0;
    /// The server has answered, with success or not.
    virtual void OnTransactionCompleted(HttpSession& session, HttpTransaction& transaction) = 0;
    /// There is no answer: kNotConnected, kUntrusted, kTimedOut (10 s for the connection, 30 s
    /// without a byte), kOutOfRange for one that is too large, kInvalidFormat for one that is none,
    /// kIo for one that breaks off, kOutOfMemory, or what Submit says.
    virtual void OnTransactionAborted(HttpSession& session, HttpTransaction& transaction,
                                      result reason) = 0;
};

}  // namespace Osp::Net::Http
