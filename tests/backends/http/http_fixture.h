// Transactions that go through libcurl to servers of another language.
#pragma once

#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "osp/base/clock.h"
#include "osp/base/event_loop.h"
#include "osp/net/network.h"
#include "tests/support/http_recorder.h"
#include "tests/support/programs/peers.h"

namespace Osp::Http {

using Net::Http::HttpMethod;
using Net::Http::HttpSession;
using Net::Http::HttpTransaction;
using Json = nlohmann::json;

/// Those of the whole program.
Testing::Peers& ThePeers();

class HttpBackendTest : public testing::Test {
  protected:
    HttpBackendTest();

    /// A new session in the place of the one before.
    HttpSession& OpenSession(const std::string& address, Net::Http::HttpCookieFlag cookies =
                                                             Net::Http::HttpCookieFlag::kEnabled);
    /// A transaction of the session, which `heard_` listens to.
    HttpTransaction& Open(const std::string& path, const std::string& body = "");
    /// Submits it and waits for its end.
    void Run(HttpTransaction& transaction);
    /// A GET in a session of its own; what `heard_` then knows.
    void Get(const std::string& address, const std::string& path);
    /// The loop runs until `done`, or fails after a while.
    void RunUntil(const std::function<bool()>& done);

    /// All of the service's requests, or those of a path.
    static void SetFault(Json fault, const std::string& path = "/");
    static std::string Plain() { return "http://" + ThePeers().Host("twitpic_web"); }
    static std::string Secure() { return "https://" + ThePeers().Host("twitter_api"); }

    Base::RealClock clock_;
    Base::EventLoop loop_{clock_};
    Base::EventLoop::Installed installedLoop_{loop_};
    Net::TransportOptions options_{
        .trust = {.authorityFile = ThePeers().AuthorityFile(), .isPlainHttpAllowed = false},
        .connectLimit = std::chrono::milliseconds(5000),
        .idleLimit = std::chrono::milliseconds(5000)};
    Net::Network network_;
    Net::Network::Installed installedNetwork_{network_};
    Testing::HttpRecorder heard_;
    std::string address_;  // the session's
    std::unique_ptr<HttpSession> session_;
};

}  // namespace Osp::Http
