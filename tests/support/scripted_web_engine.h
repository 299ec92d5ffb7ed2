// A web engine whose views do what a test says and nothing else.
#pragma once

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "osp/web/web_engine.h"

namespace Osp::Testing {

/// One view at a time counts: the newest that has not ended. Everything on the loop thread.
class ScriptedWebEngine : public Web::WebEngine {
  public:
    /// What views were told: "url URL", "data BASE MIME ENCODING [no scripts] CONTENT", "zoom
    /// LEVEL", "place X Y W H", "insert TEXT", "delete", "back" and "end".
    std::vector<std::string> log;
    std::string whyNot;  // not empty: there is no engine
    std::string url;     // of the page that is shown
    bool canGoBack = false;
    /// Of all answers, in the order of asking; none while it is awaited.
    std::vector<std::optional<Web::Controls::DecisionPolicy>> decisions;

    bool HasView() const { return client_ != nullptr; }
    /// The page is there.
    void Finish(const std::string& pageUrl) {
        url = pageUrl;
        client_->OnPageFinished();
    }
    /// An answer of the main frame has begun to come.
    void Answer(const std::string& answerUrl) {
        decisions.emplace_back();
        client_->OnAnswer(answerUrl, std::make_shared<Decision>(*this, decisions.size() - 1));
    }
    void Chunk(const std::string& text) { client_->OnChunk(Web::Bytes(text.begin(), text.end())); }
    /// The caret is in a field of the page from now on, or not any more.
    void Edit(bool isEdited, bool isByTouch = false) {
        isEdited ? client_->OnFieldEntered(isByTouch) : client_->OnFieldLeft();
    }

    /// The log since the last call, but zooms and places, which come with every view.
    std::vector<std::string> TakeLoads() {
        std::vector<std::string> loads = std::exchange(log, {});
        std::erase_if(loads, [](const std::string& line) {
            return line.starts_with("zoom") || line.starts_with("place");
        });
        return loads;
    }

    std::unique_ptr<Web::WebView> MakeView(Web::WebViewClient& client, std::string& why) override {
        if (!whyNot.empty()) {
            why = whyNot;
            return nullptr;
        }
        client_ = &client;
        return std::make_unique<View>(*this, client);
    }

  private:
    class Decision : public Web::AnswerDecision {
      public:
        Decision(ScriptedWebEngine& engine, std::size_t place) : engine_(engine), place_(place) {}
        void Make(Web::Controls::DecisionPolicy policy) override {
            engine_.decisions[place_] = policy;
        }

      private:
        ScriptedWebEngine& engine_;
        std::size_t place_;
    };

    class View : public Web::WebView {
      public:
        View(ScriptedWebEngine& engine, Web::WebViewClient& client)
            : engine_(engine), client_(client) {}
        ~View() override {
            Log("end");
            if (engine_.client_ == &client_) engine_.client_ = nullptr;
        }
        void LoadUrl(const std::string& url) override {
            engine_.url = url;
            Log("url " + url);
        }
        void LoadData(Web::PageData data) override {
            engine_.url = data.baseUrl;
            Log("data " + data.baseUrl + " " + data.mimeType + " " + data.encoding +
                (data.runsScripts ? " " : " no scripts ") +
                std::string(data.content.begin(), data.content.end()));
        }
        std::string GetUrl() const override { return engine_.url; }
        bool CanGoBack() const override { return engine_.canGoBack; }
        void GoBack() override { Log("back"); }
        void SetZoomLevel(double level) override { Log("zoom " + std::to_string(level)); }
        void TakePicture(std::function<void(std::shared_ptr<Graphics::Surface>)> taken) override {
            taken(nullptr);
        }
        void Place(const Graphics::Rectangle& p) override {
            Log("place " + std::to_string(p.x) + " " + std::to_string(p.y) + " " +
                std::to_string(p.width) + " " + std::to_string(p.height));
        }
        void Insert(const Base::String& text) override { Log("insert " + text.ToUtf8()); }
        void Delete(Ui::TextEditor::Step) override { Log("delete"); }

      private:
        void Log(const std::string& line) { engine_.log.push_back(line); }

        ScriptedWebEngine& engine_;
        Web::WebViewClient& client_;
    };

    Web::WebViewClient* client_ = nullptr;  // of the newest view
};

}  // namespace Osp::Testing
