// The program with the servers that it shares with: in a window with real pages and a person in
// front of it, or headless with a script where no page is needed. Both keep the real time.
#pragma once

#include <X11/keysym.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "osp/app/registry_file.h"
#include "tests/support/camera_screen.h"
#include "tests/support/programs/peers.h"
#include "tests/support/programs/program.h"
#include "tests/support/programs/x_server.h"
#include "tests/support/temporary_folder.h"

namespace Kivo::Testing {

constexpr Spot kUserField{235, 203};  // of the log-in page, like the next three
constexpr Spot kPasswordField{235, 257};
constexpr Spot kAllowButton{97, 306};  // also beside the keyboard, like the next one
constexpr Spot kDenyButton{201, 306};
constexpr Spot kCloseSoftkey{722, 446};
constexpr Spot kOutcomeButton{362, 300};  // under what is said of how it ended
constexpr Spot kCancelSending{362, 286};

constexpr const char* kToken = "7-0123456789abcdef0123456789abcdef";
constexpr const char* kSecret = "fedcba9876543210fedcba9876543210";

/// Where a photograph can be shared, and how that is seen.
struct SharePlace {
    const char* name;
    Spot row;
    Spot toggle;
    const char* signInService;
    const char* firstPath;
    const char* uploadService;
    const char* uploadPath;
    const char* hashtag;
    const char* tokenKey;
};
inline constexpr SharePlace kTwitter{"Twitter",
                                     kTwitterRow,
                                     kTwitterToggle,
                                     "twitter_api",
                                     "/oauth/request_token",
                                     "twitpic_api",
                                     "/1/uploadAndPost.xml",
                                     " #KIVO",
                                     "TW_TOKEN"};
inline constexpr SharePlace kFacebook{
    "Facebook",         kFacebookRow,     kFacebookToggle, "facebook_graph",
    "/oauth/authorize", "facebook_graph", "/me/photos",    "",
    "FB_TOKEN"};

class SharingJourney : public testing::Test {
  protected:
    using Json = nlohmann::json;

    static void SetUpTestSuite() { peers_ = std::make_unique<Osp::Testing::Peers>(); }
    static void TearDownTestSuite() { peers_.reset(); }

    SharingJourney() {
        peers_->Control({{"clear", true}});
        for (const char* name : {"home", "run", "tmp"}) {
            std::filesystem::create_directory(folder_ / name);
        }
        std::filesystem::create_directories(folder_ / "data/Media/Images");
    }

    void Store(const std::string& jpeg) {
        Osp::Testing::WriteText(folder_ / "data/Media/Images/KIVO0000.jpg", jpeg);
    }
    /// As if somebody had signed in to both.
    void SignInBefore() {
        std::filesystem::create_directory(folder_ / "data/kivo-camera");
        Osp::App::RegistryFile registry(folder_ / "data/kivo-camera/registry.ini");
        registry.Put("TW_TOKEN", kToken);
        registry.Put("TW_TOKEN_SECRET", kSecret);
        registry.Put("FB_TOKEN", kToken);
        EXPECT_EQ(registry.Save(), Osp::result::kSuccess);
        Accept();
    }
    void Accept() {
        peers_->Control(
            {{"accept",
              {{"oauth_token", kToken}, {"oauth_secret", kSecret}, {"access_token", kToken}}}});
    }

    void StartHeadless() { Start({"--headless", "--clock", "real"}); }
    void StartInWindow() {
        if (!x_) x_.emplace();
        Start({});
        window_ = x_->FindWindow("KIVO Camera");
        ASSERT_NE(window_, 0u);
        x_->Resize(window_, 800, 480);
        x_->Focus(window_);
    }
    /// Ends it as a user would; keeps what it has printed.
    void Finish() {
        program_->Send("quit");
        const ProgramResult ended = program_->Finish();
        EXPECT_EQ(ended.exitCode, 0);
        printed_ += ended.output + ended.errors;
        program_.reset();
    }

    void Do(const std::string& line) { program_->Send(line); }
    /// Asks for a report, which also waits for all lines before it. Ends the test if one failed.
    Json Ask(const std::string& what) {
        Do("print " + what);
        const std::string line = program_->ReadLine();
        printed_ += line;
        if (!line.empty()) return Json::parse(line);
        throw std::runtime_error(what + ": it has ended: " + program_->Finish().errors);
    }
    void Await(const std::string& what) {
        Do("await " + what + " 15000");
        Ask("sounds");
    }
    bool Shows(const std::string& text) {
        return Ask("screen").dump().find("\"" + text + "\"") != std::string::npos;
    }

    /// A finger: on the window, or without one by the script.
    void Touch(Spot spot) {
        if (window_ == 0) return Do(Tap(spot));
        x_->MoveTo(spot.x, spot.y);
        x_->Press();
        x_->Release();
    }
    void OpenAlbum() {
        Await("preview");
        Touch(kAlbumButton);
        Await("form AlbumForm");
    }
    void ChoosePlace(const SharePlace& place) {
        Touch(kShareButton);
        Await("text Share this picture");
        Touch(place.row);
    }
    void SendMessage(const std::string& message) {
        Await("text Enter message");
        if (!message.empty()) Do("text " + message);
        TouchKey(Ask("screen"), "Done");  // the keyboard may have moved it
    }
    void AwaitOutcome(const std::string& text) {
        Await("text " + text);
        Touch(kOutcomeButton);
        EXPECT_TRUE(Osp::Testing::Within(std::chrono::seconds(5), [this] { return !Shows("OK"); }));
    }

    /// Waits for the log-in page and chooses the field for the name.
    void ReachLogInPage() {
        const bool isThere = Osp::Testing::Within(std::chrono::seconds(20), [this] {
            Touch(kUserField);
            Do("wait 100");
            return Shows("edited");
        });
        EXPECT_TRUE(isThere) << "no field to write in";
    }
    /// On the keyboard of the desk, which puts away that of the screen.
    void Type(const std::string& text) {
        for (const char c : text) x_->Key(static_cast<unsigned char>(c));
    }
    void TypeOnScreen(const std::string& text) {
        const Json screen = Ask("screen");
        for (const char c : text) TouchKey(screen, std::string(1, c));
    }
    /// Of `screen`, by the word on it.
    void TouchKey(const Json& screen, const std::string& word) {
        for (const Json& control : screen["controls"]) {
            if (control["kind"] != "button" || control["text"] != word) continue;
            const Json& bounds = control["bounds"];
            return Touch({bounds[0].get<int>() + bounds[2].get<int>() / 2,
                          bounds[1].get<int>() + bounds[3].get<int>() / 2});
        }
        FAIL() << "no key " << word;
    }
    void Fault(const SharePlace& place, Json fault, bool ofUpload) {
        fault["service"] = ofUpload ? place.uploadService : place.signInService;
        if (!fault.contains("path")) {
            fault["path"] = ofUpload ? place.uploadPath : place.firstPath;
        }
        peers_->Control({{"fault", fault}});
    }
    /// What has arrived there.
    std::vector<Json> Received(const std::string& service, const std::string& path) {
        std::vector<Json> found;
        for (const Json& request : peers_->Received()) {
            if (request["service"] == service &&
                request["target"].get<std::string>().starts_with(path)) {
                found.push_back(request);
            }
        }
        return found;
    }
    /// Waits until so many have.
    void AwaitReceived(const std::string& service, const std::string& path, std::size_t count) {
        EXPECT_TRUE(Osp::Testing::Within(std::chrono::seconds(15),
                                         [&] { return Received(service, path).size() >= count; }))
            << service << path;
    }

    static inline std::unique_ptr<Osp::Testing::Peers> peers_;
    Osp::Testing::TemporaryFolder folder_;
    std::optional<XServer> x_;
    std::unique_ptr<CameraProgram> program_;
    unsigned long window_ = 0;
    std::string printed_;
    std::string services_ = peers_->ServicesFile();

  private:
    void Start(std::vector<std::string> arguments) {
        arguments.insert(arguments.end(), {"--script", "-", "--data", folder_ / "data", "--primary",
                                           "scene", "--secondary", "none", "--services", services_,
                                           "--ca", peers_->AuthorityFile()});
        window_ = 0;
        program_ = std::make_unique<CameraProgram>(
            arguments, std::map<std::string, std::string>{{"DISPLAY", x_ ? x_->Name() : ""},
                                                          {"GDK_BACKEND", "x11"},
                                                          {"DBUS_SESSION_BUS_ADDRESS", "disabled:"},
                                                          {"GTK_A11Y", "none"},
                                                          {"LC_ALL", "C.UTF-8"},
                                                          {"HOME", folder_ / "home"},
                                                          {"XDG_RUNTIME_DIR", folder_ / "run"},
                                                          {"TMPDIR", folder_ / "tmp"},
                                                          {"ASAN_OPTIONS", "detect_leaks=0"}});
    }
};

}  // namespace Kivo::Testing
