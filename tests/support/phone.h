// A phone with the application on it, under the virtual clock, for tests to use with one finger.
#pragma once

#include <future>
#include <initializer_list>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "osp/app/registry_file.h"
#include "osp/base/event_loop.h"
#include "tests/support/temporary_folder.h"

namespace Kivo::Testing {

struct PhoneSetup {
    std::string primary = "scene";  // camera sources
    std::string secondary = "scene";
    std::map<std::string, Osp::App::RegistryValue> registry = {};  // of an earlier run
    std::string dataFolder = {};                                   // empty: the phone's own
};

/// The host's machine and the application's library, run by a thread of their own. Time stands
/// still while no method waits for it. All methods belong to the test's thread.
class Phone {
  public:
    explicit Phone(const PhoneSetup& setup = {});
    /// Ends the application as a user would.
    ~Phone();
    Phone(const Phone&) = delete;
    Phone& operator=(const Phone&) = delete;

    /// Runs one line of the script language to its end. The test fails when the line does.
    void Do(const std::string& line);
    void Do(std::initializer_list<std::string> lines);
    /// The same, but returns why the line failed.
    std::optional<std::string> Try(const std::string& line);
    void Wait(int ms) { Do("wait " + std::to_string(ms)); }

    /// Runs `task` on the loop thread, between the application's events, and returns its result.
    template <class Task>
    auto On(Task task) {
        std::packaged_task<decltype(task())()> packaged(std::move(task));
        auto result = packaged.get_future();
        Post([&packaged] { packaged(); });
        return result.get();
    }

    std::string CurrentForm();
    nlohmann::json Screen();
    /// The topmost visible button with that action; null when there is none.
    nlohmann::json Button(int actionId);
    /// Whether a button with that action is visible and enabled.
    bool IsEnabled(int actionId);
    /// Clips started since the last call.
    std::vector<std::string> Sounds();
    /// Real paths of the photographs in the phone's own memory, in the order of their names.
    std::vector<std::string> Photos() const;
    nlohmann::json PhotoList();
    long long NowMs();
    /// The times of all marks and positive values of that name (base/trace.h) since the start.
    std::vector<long long> MarksMs(const std::string& mark);
    const std::string& DataFolder() const { return dataFolder_; }

    /// Ends the application if it has not ended itself; returns the program's exit code.
    int End();
    bool HasEnded() const;

  private:
    struct Running;

    void Post(std::function<void()> task);

    std::unique_ptr<Osp::Testing::TemporaryFolder> ownFolder_;
    std::string dataFolder_;
    std::unique_ptr<Running> running_;
};

}  // namespace Kivo::Testing
