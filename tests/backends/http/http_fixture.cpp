#include "tests/backends/http/http_fixture.h"

#include <utility>

#include "host/modules/http_module.h"

namespace Osp::Http {

Testing::Peers& ThePeers() {
    static Testing::Peers peers;
    return peers;
}

HttpBackendTest::HttpBackendTest()
    : network_({}, [this](const Net::Trust&) -> std::unique_ptr<Net::Transport> {
          auto transport = Host::LoadTransport(options_);
          EXPECT_TRUE(transport) << transport.Why().message;
          return std::move(*transport);
      }) {
    ThePeers().Control({{"clear", true}});
}

HttpSession& HttpBackendTest::OpenSession(const std::string& address,
                                          Net::Http::HttpCookieFlag cookies) {
    address_ = address;
    session_ = std::make_unique<HttpSession>();
    EXPECT_EQ(session_->Construct(Net::Http::HttpSessionMode::kNormal, nullptr,
                                  Base::String(address), nullptr, cookies),
              result::kSuccess);
    return *session_;
}

HttpTransaction& HttpBackendTest::Open(const std::string& path, const std::string& body) {
    HttpTransaction& transaction = *session_->OpenTransactionN();
    transaction.SetListener(&heard_);
    Net::Http::HttpRequest& request = transaction.GetRequest();
    EXPECT_EQ(request.SetUri(Base::String(address_ + path)), result::kSuccess);
    if (body.empty()) return transaction;
    request.SetMethod(HttpMethod::kPost);
    EXPECT_EQ(request.WriteBody(*Testing::BufferOf(body)), result::kSuccess);
    return transaction;
}

void HttpBackendTest::Run(HttpTransaction& transaction) {
    heard_.calls.clear();
    heard_.body.clear();
    heard_.status = 0;
    EXPECT_EQ(transaction.Submit(), result::kSuccess);
    EXPECT_TRUE(heard_.calls.empty());
    RunUntil([this] { return heard_.HasEnded(); });
}

void HttpBackendTest::Get(const std::string& address, const std::string& path) {
    OpenSession(address);
    Run(Open(path));
}

void HttpBackendTest::RunUntil(const std::function<bool()>& done) {
    constexpr std::chrono::seconds kLimit{30};
    bool isOver = false;
    const auto timer =
        loop_.StartTimer(Base::EventClass::kSystem, kLimit, [&isOver] { isOver = true; });
    loop_.RunUntil([&] { return isOver || done(); });
    loop_.CancelTimer(timer);
    EXPECT_FALSE(isOver) << "nothing came of it";
}

void HttpBackendTest::SetFault(Json fault, const std::string& path) {
    for (const char* service : {"twitpic_web", "twitter_api"}) {
        fault["service"] = service;
        fault["path"] = path;
        ThePeers().Control({{"fault", fault}});
    }
}

}  // namespace Osp::Http
