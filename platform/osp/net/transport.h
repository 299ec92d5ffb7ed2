// What carries requests to servers and brings their answers back.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include <osp/base/byte_buffer.h>
#include <osp/base/result.h>

#include "osp/net/address.h"
#include "osp/net/trust.h"

namespace Osp::Net {

/// What servers want to have back, of one transport.
class CookieJar {
  public:
    virtual ~CookieJar() = default;
};

struct OutgoingRequest {
    bool isPost = false;
    std::string uri;  // checked: absolute, printable, on `server`
    Address server;   // with its port
    /// All but Host, written as they are.
    std::vector<std::pair<std::string, std::string>> fields;
    std::optional<std::uint64_t> bodySize;  // none: no body
    CookieJar* cookies = nullptr;           // not owned, outlives the transfer; null: none
};

/// Whom a transfer asks and tells, on the loop thread, between events and never from inside Start.
class TransferClient {
  public:
    virtual ~TransferClient() = default;
    /// Puts what follows of the body to the beginning of `out` and returns how much; 0 for nothing
    /// yet: Transfer::ResumeBody says when to ask again.
    virtual std::size_t TakeBody(std::span<Base::byte> out) = 0;
    /// More of the answer's body. A failure ends the transfer with this result.
    virtual result AddToAnswer(std::span<const Base::byte> part) = 0;
    /// The last call: the whole answer is there, with its status, or why it is not.
    virtual void OnEnd(result r, int status) = 0;
};

/// Cancelled, and its client left alone, by its end.
class Transfer {
  public:
    virtual ~Transfer() = default;
    virtual void ResumeBody() = 0;
};

/// Loop thread only; outlives its transfers and jars.
class Transport {
  public:
    virtual ~Transport() = default;
    virtual std::unique_ptr<CookieJar> MakeCookieJar() = 0;
    /// `client` outlives the transfer. Null when there is not enough memory.
    virtual std::unique_ptr<Transfer> Start(const OutgoingRequest& request,
                                            TransferClient& client) = 0;
};

struct TransportOptions {
    Trust trust;
    std::chrono::milliseconds connectLimit{10'000};
    std::chrono::milliseconds idleLimit{30'000};  // without a byte in either direction
};

/// What the module exports: a new transport, the caller's; null when it cannot work here.
using MakeTransportFunction = Transport* (*)(const TransportOptions& options);
inline constexpr const char* kMakeTransportSymbol = "OspMakeTransport";

}  // namespace Osp::Net
