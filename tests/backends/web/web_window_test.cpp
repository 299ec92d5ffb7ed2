// Pages of a real site in a real window, used with real X events.
#include <X11/keysym.h>
#include <cairo.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "osp/base/owner.h"
#include "tests/support/programs/process.h"
#include "tests/support/programs/program.h"
#include "tests/support/programs/x_server.h"
#include "tests/support/temporary_folder.h"

namespace Kivo {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using namespace Testing;
using nlohmann::json;
using Osp::Testing::Process;
using Osp::Testing::Within;

constexpr unsigned long kRed = 0xFF0000;
constexpr unsigned long kGreen = 0x00C800;
constexpr unsigned long kFailureGround = 0xEDE4D2;
constexpr unsigned long kBoxSheet = 0xFAF5EA;
const std::string kBrowser = "../browser/bin/kivo-camera";

class WebWindowTest : public testing::Test {
  protected:
    WebWindowTest() : site_({"python3", KIVO_SITE}, Process::Pipes::kInputAndOutput) {
        base_ = "http://127.0.0.1:" + site_.ReadLine(10s).value_or("");
        for (const char* name : {"run", "tmp"}) fs::create_directory(folder_ / name);
    }

    /// The browser with its steps, in which "BASE" is the site.
    void Start(std::string steps, const std::vector<std::string>& wrapper = {}) {
        for (std::size_t at; (at = steps.find("BASE")) != std::string::npos;) {
            steps.replace(at, 4, base_);
        }
        std::vector<std::string> words = wrapper;
        if (!wrapper.empty()) words.push_back(ProgramFolder() + "/" + kBrowser);
        words.insert(words.end(), {"--script", "-", "--data", folder_ / "data", "--primary",
                                   "scene", "--secondary", "scene"});
        const std::string program =
            wrapper.empty() ? kBrowser : fs::relative("/usr/bin/bwrap", ProgramFolder()).string();
        browser_.emplace(words,
                         std::map<std::string, std::string>{{"BROWSER_STEPS", steps},
                                                            {"DISPLAY", x_.Name()},
                                                            {"GDK_BACKEND", "x11"},
                                                            {"DBUS_SESSION_BUS_ADDRESS", bus_},
                                                            {"GTK_A11Y", "none"},
                                                            {"LC_ALL", "C.UTF-8"},
                                                            {"XDG_RUNTIME_DIR", folder_ / "run"},
                                                            {"TMPDIR", folder_ / "tmp"},
                                                            {"ASAN_OPTIONS", "detect_leaks=0"}},
                         program);
        browser_->Send("await form BrowserForm");
        window_ = x_.FindWindow("KIVO Camera");
        EXPECT_NE(window_, 0u);
        Wait(500);
        x_.Focus(window_);
        Wait(300);
    }

    json Ask(const std::string& command) {
        browser_->Send(command);
        const std::string line = browser_->ReadLine();
        if (!line.empty()) return json::parse(line);
        ADD_FAILURE() << command << ": it has ended: " << browser_->Finish().errors;
        return json::object();
    }
    void Wait(int ms) {
        browser_->Send("wait " + std::to_string(ms));
        Ask("print sounds");
    }
    /// Takes the next step, by its soft key's own key.
    void Next() {
        x_.Key(XK_F1);
        Wait(200);
    }
    /// What the browser notes within half a minute.
    void Await(const std::string& note) {
        browser_->Send("await text " + note + " 30000");
        Ask("print sounds");
    }
    void Click(double x, double y) {
        x_.MoveTo(static_cast<int>(left_ + x * scale_), static_cast<int>(top_ + y * scale_));
        x_.Press();
        x_.Release();
        Wait(500);
    }
    void Resize(int width, int height, double scale, int left, int top) {
        x_.Resize(window_, width, height);
        scale_ = scale;
        left_ = left;
        top_ = top;
        Wait(700);
    }
    unsigned long PixelAt(double x, double y) {
        return x_.PixelAt(static_cast<int>(left_ + x * scale_),
                          static_cast<int>(top_ + y * scale_));
    }
    bool ShowsAt(double x, double y, unsigned long color) {
        return Within(10s, [&] { return PixelAt(x, y) == color; });
    }
    bool ShowsFailure() { return ShowsAt(400, 12, kFailureGround); }
    bool HasEngine() const {
        return Osp::Testing::ReadText("/proc/" + std::to_string(browser_->Id()) + "/maps")
                   .find("libwebkitgtk") != std::string::npos;
    }
    bool HasKeyboard() {
        return Ask("print screen").dump().find("\"Keyboard\"") != std::string::npos;
    }
    /// The site's next request.
    std::string Request() { return site_.ReadLine(10s).value_or("none"); }

    /// The browser, and nothing that its pages have left.
    void EndWell() {
        const ProgramResult result = browser_->Finish();
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        for (const auto& entry : fs::recursive_directory_iterator(folder_.Path())) {
            const std::string path = fs::relative(entry.path(), folder_.Path());
            EXPECT_TRUE(path.starts_with("data") || entry.is_directory()) << path;
        }
        EXPECT_FALSE(fs::exists("/.flatpak-info"));
    }

    Osp::Testing::TemporaryFolder folder_;
    XServer x_;
    Process site_;
    std::string base_;
    std::string bus_ = "disabled:";
    std::optional<CameraProgram> browser_;
    unsigned long window_ = 0;
    double scale_ = 1;
    int left_ = 0;
    int top_ = 0;
};

TEST_F(WebWindowTest, PagesLieUnderWhatTheScreenHasAboveThemAtAnySize) {
    Start("url BASE/\nback\nurl BASE/tall");
    EXPECT_FALSE(HasEngine()) << "before it is wanted";
    Next();
    Await("completed 1");
    struct {
        int width, height;
        double scale;
        int left, top;
    } const sizes[] = {{800, 480, 1, 0, 0}, {1280, 800, 1.6, 0, 16}};
    for (const auto& s : sizes) {
        SCOPED_TRACE(s.width);
        Resize(s.width, s.height, s.scale, s.left, s.top);
        EXPECT_TRUE(ShowsAt(98.5, 30, kRed) && ShowsAt(101.5, 30, kGreen)) << "at its edge";
        EXPECT_TRUE(ShowsAt(400, 470, kGreen));
        EXPECT_NE(PixelAt(20, 446), kGreen) << "a soft key";
    }
    x_.Key(XK_F2);
    EXPECT_TRUE(ShowsAt(400, 160, kBoxSheet)) << "a message box";
    EXPECT_NE(PixelAt(600, 30), kGreen) << "its scrim";
    Click(250, 130);
    x_.Key(XK_Tab);
    x_.Key(XK_Return);
    EXPECT_TRUE(ShowsAt(600, 30, kGreen)) << "answered, not the page";

    browser_->Send("screenshot " + (folder_ / "data/shot.png"));
    Wait(100);
    const Osp::Base::Owner<cairo_surface_t, cairo_surface_destroy> shot(
        cairo_image_surface_create_from_png((folder_ / "data/shot.png").c_str()));
    const auto* const row = reinterpret_cast<const unsigned*>(
        cairo_image_surface_get_data(shot.get()) + 30 * cairo_image_surface_get_stride(shot.get()));
    EXPECT_EQ(row[50] & 0xFFFFFF, kRed);
    EXPECT_EQ(row[600] & 0xFFFFFF, kGreen);

    EXPECT_EQ(Request(), "GET / - ");
    Click(250, 130);
    Await("completed 2 " + base_ + "/next back");
    EXPECT_EQ(Request(), "GET /next known=yes ");
    Next();
    Await("completed 3 " + base_ + "/");
    Click(74, 446);
    Await("completed 4 " + base_ + "/tall");
    EndWell();
}

TEST_F(WebWindowTest, FieldsAreWrittenInByBothKeyboards) {
    Start("url BASE/fields");
    Next();
    Await("completed 1");
    Click(250, 40);
    EXPECT_TRUE(HasKeyboard());
    Click(40, 336);  // its q
    x_.Key(XK_Tab);
    Wait(300);
    EXPECT_FALSE(HasKeyboard()) << "the real one is in use";
    for (const unsigned long key : {XK_a, XK_x, XK_BackSpace, XK_b}) x_.Key(key);
    Wait(300);
    Click(250, 400);  // where the screen's keyboard will be
    EXPECT_TRUE(HasKeyboard());
    bool isSeen = false;
    for (int y = 200; y < 316; ++y) isSeen = isSeen || PixelAt(350, y) == kRed;
    EXPECT_TRUE(isSeen) << "the field has come up above it";
    browser_->Send("text c");
    Click(740, 460);  // its Enter
    Await("completed 2 " + base_ + "/login");
    EXPECT_FALSE(HasKeyboard());
    EXPECT_EQ(Request(), "GET /fields - ");
    EXPECT_EQ(Request(), "POST /login before=1 user=q&word=ab&low=c");
    EndWell();
}

TEST_F(WebWindowTest, AnswersAreHandedOverInsteadOfBeingShown) {
    Start(
        "url BASE/fields\ntake on\nurl BASE/bytes?5000000\nurl BASE/cut\nurl BASE/bytes?9000000\n"
        "take off\nurl BASE/missing");
    Next();
    Await("completed 1");
    Next();
    Click(250, 40);
    for (const unsigned long key : {XK_a, XK_Return}) x_.Key(key);
    Await("chunks 59 <html><body>PIN 1234567 for user=a");
    EXPECT_EQ(Request(), "GET /fields - ");
    EXPECT_EQ(Request(), "POST /login before=1 user=a&word=&low=") << "asked for once";
    Next();
    Await("chunks 59 2097152 2097152 805696");
    EXPECT_EQ(Request(), "GET /bytes?5000000 before=1; after=1 ");
    Next();
    EXPECT_TRUE(ShowsFailure()) << "it broke off";
    Next();
    Await("2097152 2097152 2097152");
    EXPECT_TRUE(ShowsFailure()) << "it is too long";
    Next();
    Next();
    Await("completed 2 " + base_ + "/missing");
    EXPECT_TRUE(ShowsAt(400, 300, kGreen)) << "the site's own words about a failure are shown";
    EndWell();
}

TEST_F(WebWindowTest, NothingLeadsOutOfTheWeb) {
    const std::string link = "<a style='display:block;height:90px' href='BASE/asks'>";
    const std::string script = "<script>document.body.style.background='#ff0000'</script>";
    const std::string page = "data <body style='background:#00c800;margin:0'>" + link + script;
    Start("url BASE/tricks\nurl BASE/file\nurl http://127.0.0.1:9/\n" + page + "\nscripts off\n" +
          page + "\nback\ntwice " + page.substr(5));
    Next();
    Await("completed 1");
    for (const int x : {50, 160, 270}) Click(x, 130);
    EXPECT_EQ(Request(), "GET /tricks - ");
    Click(490, 130);  // wants a window of its own
    Await("completed 2 " + base_ + "/other back");
    EXPECT_EQ(Request(), "GET /other - ");
    Next();
    EXPECT_TRUE(ShowsFailure()) << "a file that is no page";
    EXPECT_EQ(Request(), "GET /file - ");
    Next();
    Next();
    Await("completed 3 localhost");
    EXPECT_TRUE(ShowsAt(400, 300, kRed));
    Next();
    Next();
    Await("completed 4 localhost");
    EXPECT_TRUE(ShowsAt(400, 300, kGreen)) << "without its scripts";
    Click(400, 40);
    Await("completed 5 " + base_ + "/asks back");
    EXPECT_EQ(Request(), "GET /asks - ");
    EXPECT_EQ(Request(), "GET /ran - ") << "it runs its own, past what it asks for";
    Next();
    Await("completed 6 localhost");
    EXPECT_TRUE(ShowsAt(400, 300, kGreen));
    Next();
    Await("completed 7 localhost");  // the second of two that are given at once
    EndWell();
}

/// The processes that `id` has started, and theirs.
std::vector<int> Descendants(int id) {
    std::vector<int> found;
    for (const auto& entry : fs::directory_iterator("/proc")) {
        const std::string name = entry.path().filename();
        if (name.find_first_not_of("0123456789") != std::string::npos) continue;
        const std::string stat = Osp::Testing::ReadText(entry.path() / "stat");
        const std::size_t end = stat.rfind(')');
        if (end == std::string::npos || std::stoi(stat.substr(end + 4)) != id) continue;
        found.push_back(std::stoi(name));
        const std::vector<int> inner = Descendants(found.back());
        found.insert(found.end(), inner.begin(), inner.end());
    }
    return found;
}

TEST_F(WebWindowTest, TroubleOfPagesIsNotTheCameras) {
    bus_ = "unix:path=/nonexistent/bus";
    Start("many\nurl BASE/slow\ndelete\nopen\nurl BASE/");
    Next();
    Await("completed 500");
    for (const int process : Descendants(browser_->Id())) {
        const std::string name =
            Osp::Testing::ReadText("/proc/" + std::to_string(process) + "/comm");
        if (name.starts_with("WebKitWeb")) kill(process, SIGKILL);
    }
    EXPECT_TRUE(ShowsFailure());
    for (int i = 0; i < 4; ++i) Next();
    Await("completed 501 " + base_ + "/");
    EXPECT_TRUE(ShowsAt(400, 470, kGreen));
    EndWell();
}

TEST_F(WebWindowTest, WithoutASandboxItSaysSo) {
    Start("url BASE/", {"--unshare-user", "--disable-userns", "--cap-drop", "ALL", "--dev-bind",
                        "/", "/", "--"});
    Next();
    Await("The sandbox of the web engine cannot be started");
    EXPECT_TRUE(ShowsAt(400, 12, kFailureGround));
    EndWell();
}

TEST(WebHeadlessTest, WithoutADisplayItSaysSo) {
    const Osp::Testing::TemporaryFolder folder;
    CameraProgram browser({"--headless", "--script", "-", "--data", folder.Path(), "--primary",
                           "scene", "--secondary", "scene"},
                          {{"BROWSER_STEPS", "url http://127.0.0.1/"}}, kBrowser);
    browser.Send("await form BrowserForm");
    browser.Send("key soft0");
    browser.Send("await text There is no display.");
    const ProgramResult result = browser.Finish();
    EXPECT_EQ(result.exitCode, 0) << result.errors;
}

}  // namespace
}  // namespace Kivo
