// One request as a handle of libcurl's.
#pragma once

#include <chrono>
#include <cstdint>
#include <curl/curl.h>
#include <glib.h>
#include <optional>
#include <string>

#include "backends/http/curl_owner.h"
#include "backends/http/curl_reactor.h"
#include "osp/net/transport.h"

namespace Osp::Http {

/// What all transfers of a transport have in common.
struct TransferSettings {
    std::chrono::milliseconds connectLimit;
    std::chrono::milliseconds idleLimit;
    std::string authorities;  // PEM, in the place of the system's file; empty: the system's
};

class CurlCookies : public Net::CookieJar {
  public:
    CurlCookies();
    CURLSH* Get() const { return share_.get(); }

  private:
    ShareHandle share_;
};

class CurlTransfer : public Net::Transfer, private CurlReactor::Client {
  public:
    /// `settings`, `reactor` and `client` outlive it. Throws std::bad_alloc.
    CurlTransfer(const TransferSettings& settings, CurlReactor& reactor,
                 const Net::OutgoingRequest& request, Net::TransferClient& client);
    ~CurlTransfer() override;
    CurlTransfer(const CurlTransfer&) = delete;
    CurlTransfer& operator=(const CurlTransfer&) = delete;

    void ResumeBody() override;

  private:
    static std::size_t OnBodyWanted(char* out, std::size_t size, std::size_t count, void* transfer);
    static std::size_t OnHeader(char* line, std::size_t size, std::size_t count, void* transfer);
    static std::size_t OnBody(char* part, std::size_t size, std::size_t count, void* transfer);
    static gboolean OnLook(gpointer transfer);

    void SetHeader(const Net::OutgoingRequest& request);
    void SetBody(std::uint64_t size);
    void SetServer(const Net::OutgoingRequest& request);
    void SetTrust(const TransferSettings& settings);

    void OnDone(CURLcode code) override;
    bool IsAnswered(bool wasSending) const;
    int Status() const;
    void End(result r);

    CurlReactor& reactor_;
    Net::TransferClient& client_;
    const std::chrono::microseconds idleLimit_;
    TextList fields_;
    TextList addresses_;
    EasyHandle easy_;

    std::uint64_t bodyLeft_ = 0;  // that the client has not handed over
    bool isPaused_ = false;
    bool isEnded_ = false;

    std::size_t headerSize_ = 0;
    std::uint64_t answerSize_ = 0;
    bool isHeaderComplete_ = false;
    std::optional<result> failure_;  // why a callback has ended it

    std::uint64_t bytesSeen_ = 0;  // when they last changed
    std::chrono::microseconds changedAt_;
    guint look_ = 0;
};

}  // namespace Osp::Http
