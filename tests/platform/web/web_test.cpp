// The web control over an engine that does what the test says.
#include <functional>

#include <osp/ui/controls/popup.h>
#include <osp/ui/weak_control.h>
#include <osp/web/controls/web.h>

#include "tests/support/scripted_web_engine.h"
#include "tests/support/ui_fixture.h"

namespace Osp::Web::Controls {
namespace {

using Log = std::vector<std::string>;

constexpr std::uint32_t kBlankColor = 0xFFFFFF;

class WebTest : public Ui::UiTest, public ILoadingListener, public IWebDownloadListener {
  protected:
    WebTest() {
        web_ = Add(new Web);
        EXPECT_EQ(web_->Construct({0, 0, 800, 480}), result::kSuccess);
        weak_ = Ui::WeakControl(*web_);
        web_->SetLoadingListener(this);
        web_->SetDownloadListener(this);
        (void)screen_.Compose();
    }
    /// Ends views before the engine, which the form outlives.
    ~WebTest() override {
        if (Web* const web = weak_.Get()) web->Clear();
    }

    void LoadText(const char* text) {
        Base::ByteBuffer bytes;
        ASSERT_EQ(bytes.Construct(static_cast<int>(std::string_view(text).size()) + 1),
                  result::kSuccess);
        std::ranges::copy(std::string_view(text), bytes.GetPointer());
        ASSERT_EQ(bytes.SetLimit(bytes.GetCapacity() - 1), result::kSuccess);
        ASSERT_EQ(web_->LoadData("localhost", bytes, "text/html", "UTF-8"), result::kSuccess);
    }
    void Settle() {
        loop_.Settle();
        (void)screen_.Compose();
    }
    /// Opens an engine with a page of the web.
    void Open() {
        EXPECT_EQ(web_->LoadUrl("https://a.example/x"), result::kSuccess);
        Settle();
    }
    Ui::Controls::Form* AddForm() {
        auto* const form = new Ui::Controls::Form;
        EXPECT_EQ(form->Construct(0), result::kSuccess);
        EXPECT_EQ(frame_.AddControl(form), result::kSuccess);
        return form;
    }

    void OnLoadingCompleted() override {
        log_.push_back("completed " + web_->GetUrl().ToUtf8());
        if (completed_) completed_();
    }
    DecisionPolicy OnLoadingDecision(const Base::String& url) override {
        log_.push_back("decide " + url.ToUtf8());
        return policy_;
    }
    void OnWebChunkedDataReceived(const Base::ByteBuffer& chunk) override {
        const auto bytes = chunk.Remaining();
        log_.push_back("chunk " + std::string(bytes.begin(), bytes.end()));
    }

    Osp::Testing::ScriptedWebEngine engine_;
    WebEngine::Installed installedEngine_{engine_};
    Web* web_;  // the form's
    Ui::WeakControl<Web> weak_;
    DecisionPolicy policy_ = DecisionPolicy::kRender;
    std::function<void()> completed_;
};

TEST_F(WebTest, LoadsWaitUntilTheFormIsCurrentAndOnlyTheLastIsRun) {
    Ui::Controls::Form* const other = AddForm();
    EXPECT_EQ(frame_.SetCurrentForm(other), result::kSuccess);
    EXPECT_EQ(web_->LoadUrl("http://a.example/"), result::kSuccess);
    EXPECT_EQ(web_->GetUrl(), Base::String("http://a.example/"));
    LoadText("first");
    web_->SetScriptsEnabled(false);
    LoadText("last");
    EXPECT_EQ(web_->SetZoomLevel(0.75), result::kSuccess);
    Settle();
    EXPECT_FALSE(engine_.HasView());
    EXPECT_EQ(frame_.SetCurrentForm(form_), result::kSuccess);
    loop_.Settle();
    EXPECT_EQ(engine_.log,
              (Log{"zoom 0.750000", "data localhost text/html UTF-8 no scripts last"}));
    web_->SetScriptsEnabled(true);
    LoadText("now");
    EXPECT_EQ(engine_.log.back(), "data localhost text/html UTF-8 now") << "at once from then on";
}

TEST_F(WebTest, GoesOnlyToPagesOfTheWeb) {
    for (const char* url : {"", "file:///etc/passwd", "javascript:alert(1)", "data:text/html,x",
                            "a.example", "http://", "ftp://a.example/"}) {
        EXPECT_EQ(web_->LoadUrl(url), result::kInvalidArgument) << url;
    }
    EXPECT_EQ(web_->LoadUrl("HTTPS://a.example/"), result::kSuccess);
    for (const double level : {0.0, -1.0, 4.1}) {
        EXPECT_EQ(web_->SetZoomLevel(level), result::kInvalidArgument) << level;
    }
}

TEST_F(WebTest, ListenersHearFromTheLoopOfWhatIsLoadedNow) {
    Open();
    engine_.Finish("https://a.example/y");
    EXPECT_EQ(log_, Log{}) << "not inside the call";
    loop_.Settle();
    policy_ = DecisionPolicy::kDownload;
    engine_.Answer("https://a.example/pin");
    engine_.Chunk("one");
    loop_.Settle();
    EXPECT_EQ(log_,
              (Log{"completed https://a.example/y", "decide https://a.example/pin", "chunk one"}));
    EXPECT_EQ(engine_.decisions.back(), DecisionPolicy::kDownload);
    log_.clear();
    engine_.Finish("https://a.example/z");
    engine_.Answer("https://a.example/z");
    engine_.Chunk("two");
    LoadText("something else");
    loop_.Settle();
    EXPECT_EQ(log_, Log{}) << "of what was given up";
    EXPECT_EQ(engine_.decisions.back(), std::nullopt);
    web_->SetLoadingListener(nullptr);
    engine_.Answer("https://a.example/");
    loop_.Settle();
    EXPECT_EQ(engine_.decisions.back(), DecisionPolicy::kRender) << "nobody objects";
}

TEST_F(WebTest, EndsWithItsViewAlsoInTheMiddleOfACall) {
    Open();
    completed_ = [this] { EXPECT_EQ(form_->RemoveControl(*web_), result::kSuccess); };
    engine_.Finish("https://a.example/");
    engine_.Finish("https://a.example/");
    engine_.Answer("https://a.example/");
    loop_.Settle();
    EXPECT_EQ(log_, Log{"completed https://a.example/"});
    EXPECT_FALSE(engine_.HasView());
}

TEST_F(WebTest, ClearEndsTheViewAndTheNextLoadMakesAnother) {
    Open();
    engine_.Finish("https://a.example/");
    web_->Clear();
    EXPECT_FALSE(engine_.HasView());
    EXPECT_TRUE(web_->GetUrl().IsEmpty());
    EXPECT_FALSE(web_->CanGoBack());
    engine_.TakeLoads();
    Open();
    EXPECT_EQ(engine_.TakeLoads(), Log{"url https://a.example/x"});
    EXPECT_EQ(log_, Log{});
    web_->GoBack();
    engine_.canGoBack = true;
    web_->GoBack();
    EXPECT_EQ(engine_.TakeLoads(), Log{"back"});
}

TEST_F(WebTest, TheViewIsWhereTheControlIsSeenAndRestsOtherwise) {
    Open();
    const auto place = [this] {
        (void)screen_.Compose();
        return engine_.log.back();
    };
    EXPECT_EQ(place(), "place 0 0 800 480");
    EXPECT_EQ(PixelAt(400, 200), kBlankColor);
    screen_.SetForeground(false);
    EXPECT_EQ(engine_.log.back(), "place 0 0 0 0") << "without waiting for a picture";
    screen_.SetForeground(true);
    EXPECT_EQ(engine_.log.back(), "place 0 0 800 480");
    Ui::Controls::Form* const other = AddForm();
    EXPECT_EQ(frame_.SetCurrentForm(other), result::kSuccess);
    EXPECT_EQ(place(), "place 0 0 0 0");
    EXPECT_EQ(frame_.SetCurrentForm(form_), result::kSuccess);
    EXPECT_EQ(place(), "place 0 0 800 480");
    EXPECT_EQ(screen_.GetTypedInto(), screen_.GetOutsideViews().Of(*web_));
    EXPECT_NE(screen_.GetTypedInto(), nullptr);
    Ui::Controls::Popup popup;
    ASSERT_EQ(popup.Construct("", {200, 100}), result::kSuccess);
    (void)popup.SetShowState(true);
    EXPECT_EQ(screen_.GetTypedInto(), nullptr) << "a popup has the keys";
}

TEST_F(WebTest, AFieldOfThePageHasTheScreensKeyboard) {
    Open();
    engine_.Edit(true);
    Settle();
    EXPECT_TRUE(screen_.IsKeyboardShown());
    EXPECT_EQ(engine_.log.back(), "place 0 0 800 316") << "above the keyboard";
    textInput_.Insert("a");
    textInput_.Delete(Ui::TextEditor::Step::kCharacterBefore);
    EXPECT_EQ(engine_.TakeLoads(), (Log{"url https://a.example/x", "insert a", "delete"}));
    textInput_.UseRealKeyboard();
    engine_.Edit(false);
    Settle();
    EXPECT_EQ(textInput_.GetOutsideTarget(), nullptr);
    engine_.Edit(true);
    loop_.Settle();
    EXPECT_EQ(textInput_.GetOutsideTarget(), web_);
    EXPECT_FALSE(screen_.IsKeyboardShown()) << "the real one is still in use";
    web_->Clear();
    textInput_.Insert("nobody hears it");
    EXPECT_EQ(engine_.TakeLoads(), Log{"end"});
}

}  // namespace
}  // namespace Osp::Web::Controls
