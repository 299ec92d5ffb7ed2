#include "tests/support/phone.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <filesystem>
#include <gtest/gtest.h>
#include <mutex>
#include <thread>

#include "host/machine.h"
#include "host/modules/application_library.h"
#include "host/script/report.h"
#include "host/script/script_driver.h"
#include "host/script/script_queue.h"
#include "host/script/show_recorder.h"
#include "osp/base/trace.h"

namespace Kivo::Testing {

namespace {

using Json = nlohmann::json;

void WriteRegistry(const std::string& dataFolder, const PhoneSetup& setup) {
    if (setup.registry.empty()) return;
    std::filesystem::create_directories(dataFolder + "/kivo-camera");
    Osp::App::RegistryFile file(dataFolder + "/kivo-camera/registry.ini");
    for (const auto& [key, value] : setup.registry) file.Put(key, value);
    ASSERT_EQ(file.Save(), result::kSuccess);
}

Host::Options MakeOptions(const std::string& dataFolder, const PhoneSetup& setup) {
    Host::Options options;
    options.isHeadless = true;
    options.clock = Host::ClockKind::kVirtual;
    options.dataFolder = dataFolder;
    options.primary = setup.primary;
    options.secondary = setup.secondary;
    return options;
}

long long LoopMs() {
    return Osp::Base::EventLoop::Current().GetClock().Now().count() / 1000;
}

class MarkLog : public Osp::Base::Trace {
  public:
    void OnMark(const char* stage) override { timesMs[stage].push_back(LoopMs()); }
    void OnValue(const char* name, long long value) override {
        if (value > 0) OnMark(name);
    }
    std::map<std::string, std::vector<long long>> timesMs;
};

}  // namespace

struct Phone::Running {
    Host::ScriptQueue queue;
    std::mutex mutex;
    std::condition_variable changed;
    bool hasStarted = false;
    bool hasEnded = false;
    int exitCode = 0;
    Osp::Base::EventLoop* loop = nullptr;  // while it runs
    MarkLog marks;                         // of the loop thread
    std::thread thread;

    void Run(const Host::Options& options) {
        const std::string package = Host::PackageFolder();
        auto entry = Host::LoadApplication(package);
        auto made = Host::Machine::Make(options, package + "/share/kivo-camera/Res");
        if (!entry || !made) {
            ADD_FAILURE() << (entry ? made.Why() : entry.Why()).message;
            Set([this] { hasStarted = hasEnded = true; });
            return;
        }
        const std::unique_ptr<Host::Machine> machine = std::move(*made);
        const Osp::Base::Trace::Installed installedMarks(marks);
        Host::ShowRecorder recorder(nullptr);
        Host::ScriptDriver driver(
            machine->GetLoop(), machine->GetVirtualClock(), queue,
            Host::CommandContext{recorder, machine->GetCameraModules()},
            [](const auto&) { Osp::App::Lifecycle::Current().Terminate(false); });
        Set([&] {
            loop = &machine->GetLoop();
            hasStarted = true;
        });
        const int code = machine->Run(*entry);
        Set([&] {
            exitCode = code;
            loop = nullptr;
            hasEnded = true;
        });
    }

    template <class Change>
    void Set(Change change) {
        const std::lock_guard lock(mutex);
        change();
        changed.notify_all();
    }
};

Phone::Phone(const PhoneSetup& setup)
    : dataFolder_(setup.dataFolder), running_(std::make_unique<Running>()) {
    if (dataFolder_.empty()) {
        ownFolder_ = std::make_unique<Osp::Testing::TemporaryFolder>();
        dataFolder_ = ownFolder_->Path();
    }
    WriteRegistry(dataFolder_, setup);
    Running& running = *running_;
    running.thread = std::thread(
        [&running, options = MakeOptions(dataFolder_, setup)] { running.Run(options); });
    std::unique_lock lock(running.mutex);
    running.changed.wait(lock, [&running] { return running.hasStarted; });
}

Phone::~Phone() {
    End();
}

int Phone::End() {
    running_->queue.Close();
    if (running_->thread.joinable()) running_->thread.join();
    return running_->exitCode;
}

bool Phone::HasEnded() const {
    const std::lock_guard lock(running_->mutex);
    return running_->hasEnded;
}

void Phone::Do(const std::string& line) {
    if (const auto error = Try(line)) ADD_FAILURE() << line << ": " << *error;
}

void Phone::Do(std::initializer_list<std::string> lines) {
    for (const std::string& line : lines) Do(line);
}

std::optional<std::string> Phone::Try(const std::string& line) {
    Running& running = *running_;
    // Shared, because the application may end, and this method return, before the line does.
    const auto answer = std::make_shared<std::optional<std::optional<std::string>>>();
    running.queue.Add({line, 0, [&running, answer](const Host::Outcome<>& outcome) {
                           running.Set([&] {
                               answer->emplace();
                               if (!outcome) **answer = outcome.Why().message;
                           });
                       }});
    std::unique_lock lock(running.mutex);
    running.changed.wait(lock, [&] { return answer->has_value() || running.hasEnded; });
    if (!answer->has_value()) return "the application has ended";
    return **answer;
}

void Phone::Post(std::function<void()> task) {
    const std::lock_guard lock(running_->mutex);
    if (running_->loop == nullptr) throw std::logic_error("the application has ended");
    running_->loop->Post(Osp::Base::EventClass::kSystem, std::move(task));
}

std::string Phone::CurrentForm() {
    return On([] { return Host::CurrentFormName(); });
}

Json Phone::Screen() {
    return Json::parse(On([] { return Host::ScreenReport(); }));
}

Json Phone::Button(int actionId) {
    const Json screen = Screen();
    for (const Json& control : screen["controls"]) {
        if (control.contains("id") && control["id"] == actionId) return control;
    }
    return nullptr;
}

bool Phone::IsEnabled(int actionId) {
    const Json button = Button(actionId);
    return !button.is_null() && button["enabled"].get<bool>();
}

std::vector<std::string> Phone::Sounds() {
    return Json::parse(On([] { return Host::SoundsReport(); }))["sounds"];
}

std::vector<std::string> Phone::Photos() const {
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::directory_iterator(dataFolder_ + "/Media/Images")) {
        if (entry.path().filename().string().starts_with("KIVO")) paths.push_back(entry.path());
    }
    std::ranges::sort(paths);
    return paths;
}

Json Phone::PhotoList() {
    return Json::parse(On([] { return Host::PhotosReport(); }))["photos"];
}

long long Phone::NowMs() {
    return On(LoopMs);
}

std::vector<long long> Phone::MarksMs(const std::string& mark) {
    return On([this, &mark] { return running_->marks.timesMs[mark]; });
}

}  // namespace Kivo::Testing
