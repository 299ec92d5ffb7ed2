// A phone whose networks and pages do what a test says.
#pragma once

#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

#include "app/model/request_ids.h"
#include "osp/ui/access.h"
#include "osp/ui/screen.h"
#include "tests/support/choosing.h"
#include "tests/support/pictures/jpeg.h"
#include "tests/support/scripted_transport.h"
#include "tests/support/scripted_web_engine.h"

namespace Kivo::Testing {

class SharingTest : public testing::Test {
  protected:
    using Log = std::vector<std::string>;
    using Exchange = Osp::Testing::ScriptedExchange;

    void Begin(const std::map<std::string, Osp::App::RegistryValue>& registry = {}) {
        std::filesystem::create_directories(folder_ / "Media/Images");
        Osp::Testing::WriteText(folder_ / "Media/Images/KIVO0000.jpg", photo_);
        phone_ =
            std::make_unique<Phone>(PhoneSetup{.registry = registry, .dataFolder = folder_.Path()});
        phone_->On([this] {
            transport_ = std::make_unique<Osp::Testing::ScriptedTransport>();
            installedEngine_.emplace(engine_);
        });
        phone_->Do("await preview");
    }
    /// Ends what is under way before what it is asked of, and the pages before their engine.
    void End() {
        if (!phone_) return;
        Ask(kRequestShareCancelled);
        phone_->On([this] {
            installedEngine_.reset();
            transport_.reset();
        });
        phone_.reset();
    }
    ~SharingTest() override { End(); }

    void Do(std::initializer_list<std::string> lines) { phone_->Do(lines); }
    void OpenAlbum() { Do({Tap(kAlbumButton), "await form AlbumForm", "wait 50"}); }
    void Share(int y) { Do({Tap(kShareButton), "wait 50", Tap({360, y}), "wait 50"}); }
    void ShareWithTwitter() { Share(160); }
    void ShareWithFacebook() { Share(232); }
    /// Switches an account in the settings.
    void Switch(int y) { Do({Tap({620, y}), "wait 50"}); }
    void SwitchTwitter() { Switch(399); }
    void SwitchFacebook() { Switch(334); }
    /// In the message, with the keyboard of the screen shown.
    void Press(int actionId) {
        const nlohmann::json bounds = phone_->Button(actionId)["bounds"];
        ASSERT_FALSE(bounds.is_null()) << actionId;
        Do({Tap({bounds[0].get<int>() + 20, bounds[1].get<int>() + 20}), "wait 50"});
    }

    /// Lets `task` do something to the engine or the transport, and the application react.
    template <class Task>
    void With(Task task) {
        phone_->On([&] {
            task();
            return 0;
        });
        phone_->Wait(20);
    }
    void Answer(int status, const std::string& body = "") {
        With([&] { transport_->Last().Answer(status, body); });
    }
    void Break() {
        With([&] { transport_->Last().Fail(result::kNotConnected); });
    }
    void Finish(const std::string& url) {
        With([&] { engine_.Finish(url); });
    }
    void Chunk(const std::string& text) {
        With([&] { engine_.Chunk(text); });
    }
    /// A request of another form's, to the share form.
    void Ask(long request) {
        With([&] {
            const auto* const frame = Osp::Ui::Screen::Current().GetCurrentForm()->GetParent();
            for (const auto& form : Osp::Ui::Access::Children(*frame)) {
                Osp::Ui::Control& control = *form;
                if (std::string_view(typeid(control).name()) != "N4Kivo12SnsShareFormE") continue;
                (void)control.SendUserEvent(request, nullptr);
            }
        });
    }
    Log TakeLoads() {
        return phone_->On([this] { return engine_.TakeLoads(); });
    }
    std::size_t Requests() {
        return phone_->On([this] { return transport_->exchanges.size(); });
    }
    Exchange& Last() { return transport_->Last(); }
    bool IsUnderWay() {
        return phone_->On([this] { return Last().client != nullptr; });
    }
    /// "METHOD URI" of the last request.
    std::string LastRequest() {
        const auto& request = Last().request;
        return (request.isPost ? "POST " : "GET ") + request.uri;
    }
    /// All of the last request's body, which is taken bit by bit.
    std::string TakeBody() {
        int idle = 0;
        while (idle < 3 && Last().body.size() < Last().request.bodySize.value_or(0)) {
            With([&] {
                const bool isTaken = Last().client != nullptr && Last().Take(1000) > 0;
                idle = isTaken ? 0 : idle + 1;
            });
        }
        return Last().body;
    }
    std::string Registry() const {
        return Osp::Testing::ReadText(folder_ / "kivo-camera/registry.ini");
    }
    bool Says(const std::string& text) { return !phone_->Try("expect text " + text); }

    const std::string photo_ = EncodeJpeg(RandomPicture(400, 300, Look::kNoise, 1));
    Osp::Testing::TemporaryFolder folder_;
    Osp::Testing::ScriptedWebEngine engine_;
    std::unique_ptr<Osp::Testing::ScriptedTransport> transport_;
    std::optional<Osp::Web::WebEngine::Installed> installedEngine_;
    std::unique_ptr<Phone> phone_;
};

}  // namespace Kivo::Testing
