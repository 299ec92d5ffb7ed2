// A request under way, from its submission to its last report.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>

#include <osp/net/http/http_transaction.h>

#include "osp/base/event_source.h"
#include "osp/net/transport.h"

namespace Osp::Net::Http {

/// How long the body of `request` is: what "Content-Length" says, or what has been written. Nothing
/// when the two do not go together (see HttpTransaction::Submit).
std::optional<std::uint64_t> BodyLength(const HttpRequest& request, bool reportsReadyToWrite,
                                        std::uint64_t written);

/// Every report is an event of its own and the last thing that its event does, because the listener
/// may delete transaction and session, and with them this.
class Exchange : private TransferClient {
  public:
    explicit Exchange(HttpTransaction& transaction) : transaction_(transaction) {}

    /// What keeps it from being sent is reported like all else.
    void Begin(std::uint64_t bodyLength);

  private:
    result Start(std::uint64_t bodyLength);
    bool IsPermitted(std::uint64_t bodyLength) const;
    OutgoingRequest Compose(std::uint64_t bodyLength) const;
    CookieJar* FindCookies(Transport& transport) const;

    using Report =
        std::function<void(IHttpTransactionEventListener&, HttpSession&, HttpTransaction&)>;
    /// `report` may be the end of this.
    void Post(Report report);
    void PostEnd(Report report);
    void Abort(result reason);
    void PostReadyToWrite();

    std::size_t TakeBody(std::span<Base::byte> out) override;
    result AddToAnswer(std::span<const Base::byte> part) override;
    void OnEnd(result r, int status) override;

    HttpTransaction& transaction_;  // owns this
    Base::EventSource events_;
    std::unique_ptr<Transfer> transfer_;  // null when it could not be started
};

}  // namespace Osp::Net::Http
