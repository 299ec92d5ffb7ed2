// A transport that does what a test says.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "osp/net/network.h"

namespace Osp::Testing {

/// What the transport knows of one request. Valid until the test ends.
struct ScriptedExchange {
    Net::OutgoingRequest request;
    Net::TransferClient* client = nullptr;  // null once the transfer has ended or been cancelled
    std::string body;                       // that has been taken
    int resumptions = 0;

    /// Takes at most `most` bytes of the body; returns how many there were.
    std::size_t Take(std::size_t most) {
        std::vector<Base::byte> block(most);
        block.resize(client->TakeBody(block));
        body.append(block.begin(), block.end());
        return block.size();
    }
    void Answer(int status, const std::string& answer = "") {
        const auto* const bytes = reinterpret_cast<const Base::byte*>(answer.data());
        const result r = client->AddToAnswer({bytes, answer.size()});
        End(r, status);
    }
    void Fail(result reason) { End(reason, 0); }

  private:
    void End(result r, int status) { std::exchange(client, nullptr)->OnEnd(r, status); }
};

/// Installed as the network for as long as it lives.
class ScriptedTransport {
  public:
    explicit ScriptedTransport(const Net::Trust& trust = {})
        : network_(trust, [this](const Net::Trust&) { return std::make_unique<Own>(exchanges); }) {}

    /// In the order of submission.
    std::vector<std::unique_ptr<ScriptedExchange>> exchanges;
    ScriptedExchange& Last() { return *exchanges.back(); }

  private:
    using Exchanges = std::vector<std::unique_ptr<ScriptedExchange>>;

    class Running : public Net::Transfer {
      public:
        explicit Running(ScriptedExchange& exchange) : exchange_(exchange) {}
        ~Running() override { exchange_.client = nullptr; }
        void ResumeBody() override { ++exchange_.resumptions; }

      private:
        ScriptedExchange& exchange_;
    };

    class Own : public Net::Transport {
      public:
        explicit Own(Exchanges& exchanges) : exchanges_(exchanges) {}
        std::unique_ptr<Net::CookieJar> MakeCookieJar() override {
            return std::make_unique<Net::CookieJar>();
        }
        std::unique_ptr<Net::Transfer> Start(const Net::OutgoingRequest& request,
                                             Net::TransferClient& client) override {
            exchanges_.push_back(std::make_unique<ScriptedExchange>());
            exchanges_.back()->request = request;
            exchanges_.back()->client = &client;
            return std::make_unique<Running>(*exchanges_.back());
        }

      private:
        Exchanges& exchanges_;
    };

    Net::Network network_;
    Net::Network::Installed installed_{network_};
};

}  // namespace Osp::Testing
