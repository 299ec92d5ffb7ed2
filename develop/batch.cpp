#include "develop/batch.h"

#include <algorithm>
#include <atomic>
#include <cassert>
#include <filesystem>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

#include "develop/developer.h"
#include "develop/interruption.h"
#include "develop/memory_budget.h"
#include "develop/pictures/picture_files.h"
#include "develop/progress_bar.h"
#include "osp/io/safe_file.h"

// Threads take pictures one by one from a common list; each picture's outcome belongs to the thread
// that took it until all have ended, so the report needs no lock and comes out in name order
// however the threads run. A thread that waits for memory holds none, so the one that has some goes
// on and gives it back: nobody waits for ever. A worker keeps its memory from one small picture to
// the next and gives back a large one's before it asks for more.

namespace Kivo::Tools {

namespace {

namespace fs = std::filesystem;

Problem ListPictures(const fs::path& folder, std::vector<std::string>& names) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        std::error_code ignored;
        if (name[0] != '.' && FormatOfName(name) && entry->is_regular_file(ignored)) {
            names.push_back(name);
        }
    }
    if (error) return folder.string() + ": " + error.message();
    if (names.empty()) return folder.string() + ": no pictures in this folder";
    std::ranges::sort(names);
    return {};
}

Problem MakeFolder(const fs::path& folder, const fs::path& inputFolder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) return folder.string() + ": " + error.message();
    if (fs::equivalent(folder, inputFolder, error)) {
        return folder.string() + ": this is the input folder; its pictures would be replaced";
    }
    Osp::Io::RemoveStaleTemporaries(folder.string());
    return {};
}

/// A thread's developer, with leave for its memory.
class Worker {
  public:
    Worker(Effects::EffectTables& tables, MemoryBudget& budget)
        : shared_(tables), budget_(budget) {}
    ~Worker() { Forget(); }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    /// The one that there is already, with its memory, if the picture is small. Nothing of a large
    /// one is kept, its tables neither: it is the sum of what is kept that grows.
    Developer& DeveloperFor(const std::string& path) {
        const std::size_t needed = std::max(NeededBytes(path), kSmallBytes);
        if (developer_ && needed == taken_ && needed == kSmallBytes) return *developer_;
        Forget();
        assert(taken_ == 0);  // whoever waits holds nothing
        budget_.Take(needed);
        taken_ = needed;
        Effects::EffectTables& tables = needed == kSmallBytes ? shared_ : own_.emplace();
        return developer_.emplace(tables, false);
    }
    /// After the picture.
    void ForgetIfLarge() {
        if (taken_ != kSmallBytes) Forget();
    }

  private:
    static constexpr std::size_t kSmallBytes = 64'000'000;

    void Forget() {
        developer_.reset();
        own_.reset();
        budget_.Give(std::exchange(taken_, 0));
    }

    Effects::EffectTables& shared_;
    MemoryBudget& budget_;
    std::optional<Effects::EffectTables> own_;
    std::optional<Developer> developer_;
    std::size_t taken_ = 0;
};

/// The pictures of a folder, taken one after the other by several threads.
class Job {
  public:
    Job(const Recipe& recipe, fs::path from, fs::path to, const std::vector<std::string>& names)
        : recipe_(recipe),
          from_(std::move(from)),
          to_(std::move(to)),
          bar_(static_cast<int>(names.size())) {
        std::vector<std::string> inputs;
        for (const std::string& name : names) {
            // There may be no memory left to say it when it happens.
            pictures_.push_back({name, false, {(from_ / name).string() + ": not enough memory"}});
            inputs.push_back((from_ / name).string());
        }
        originals_ = IdsOf(inputs);
    }

    /// In each of the threads.
    void Work() {
        Worker worker(tables_, budget_);
        for (std::size_t i = next_++; i < pictures_.size() && !HasToEnd(); i = next_++) {
            Develop(worker, pictures_[i]);
            const std::lock_guard lock(mutex_);
            bar_.Show(++done_);
        }
    }

    void Report(BatchReport& report) const {
        report.isDiskFull = isDiskFull_;
        for (const Picture& picture : pictures_) {
            const auto& [problem, isDiskFull, warnings] = picture.outcome;
            if (!picture.isTaken) {
                ++report.leftOut;
            } else if (problem.empty()) {
                ++report.developed;
            } else {
                report.problems.push_back(problem);
            }
            report.warnings.insert(report.warnings.end(), warnings.begin(), warnings.end());
        }
    }

  private:
    struct Picture {
        std::string name;
        bool isTaken;
        Outcome outcome;
    };

    bool HasToEnd() const { return interruption_.HasCome() || isDiskFull_; }

    void Develop(Worker& worker, Picture& picture) try {
        picture.isTaken = true;
        const std::string input = (from_ / picture.name).string();
        const std::string output = (to_ / picture.name).string();
        picture.outcome =
            DevelopFiles(worker.DeveloperFor(input), recipe_, {&input, 1}, originals_, output);
        worker.ForgetIfLarge();
        // All that follow would fail alike.
        if (picture.outcome.isDiskFull) isDiskFull_ = true;
    } catch (const std::bad_alloc&) {
        worker.ForgetIfLarge();  // the problem says so already
    }

    const Recipe recipe_;
    const fs::path from_;
    const fs::path to_;
    const Interruption interruption_;
    Effects::EffectTables tables_;
    MemoryBudget budget_;
    FileIds originals_;
    std::atomic<bool> isDiskFull_ = false;
    std::vector<Picture> pictures_;  // each belongs to the thread that has taken it
    std::atomic<std::size_t> next_ = 0;
    std::mutex mutex_;  // guards what follows
    ProgressBar bar_;
    int done_ = 0;
};

/// On all processors, and in this thread alone where no other can be had.
void WorkInThreads(Job& job) {
    // Two more than processors, to use them while others wait for the disk.
    const unsigned others = std::thread::hardware_concurrency() + 1;
    std::vector<std::jthread> threads;
    try {
        for (unsigned i = 0; i < others; ++i) threads.emplace_back([&job] { job.Work(); });
    } catch (const std::system_error&) {
        // The limit of threads is reached: those that there are do it.
    }
    job.Work();
}

}  // namespace

Problem DevelopFolder(const Recipe& recipe, const std::string& inputFolder,
                      const std::string& outputFolder, BatchReport& report) {
    std::vector<std::string> names;
    Problem problem = ListPictures(inputFolder, names);
    if (problem.empty()) problem = MakeFolder(outputFolder, inputFolder);
    if (!problem.empty()) return problem;
    Job job(recipe, inputFolder, outputFolder, names);
    WorkInThreads(job);
    job.Report(report);
    return {};
}

}  // namespace Kivo::Tools
