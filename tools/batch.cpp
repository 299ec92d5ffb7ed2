#include "batch.h"

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <mutex>
#include <system_error>
#include <thread>

#include "developer.h"
#include "io/safe_file.h"
#include "picture_files.h"
#include "progress_bar.h"

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

/// The pictures of a folder, taken one after the other by several threads.
class Job {
  public:
    Job(const Recipe& recipe, fs::path from, fs::path to, std::vector<std::string> names)
        : recipe_(recipe),
          from_(std::move(from)),
          to_(std::move(to)),
          names_(std::move(names)),
          problems_(names_.size()),
          bar_(static_cast<int>(names_.size())) {}

    /// In each of the threads.
    void Work() {
        Developer developer(tables_, false);
        for (std::size_t i = next_++; i < names_.size(); i = next_++) {
            problems_[i] = Develop(developer, names_[i]);
            const std::lock_guard lock(mutex_);
            bar_.Show(++done_);
        }
    }

    void Report(BatchReport& report) const {
        std::ranges::copy_if(problems_, std::back_inserter(report.problems),
                             [](const Problem& problem) { return !problem.empty(); });
        report.developed = static_cast<int>(names_.size() - report.problems.size());
    }

  private:
    Problem Develop(Developer& developer, const std::string& name) const try {
        const std::string input = (from_ / name).string();
        return DevelopFiles(developer, recipe_, {&input, 1}, (to_ / name).string());
    } catch (const std::bad_alloc&) {
        return name + ": not enough memory";
    }

    const Recipe recipe_;
    const fs::path from_;
    const fs::path to_;
    const std::vector<std::string> names_;
    Effects::EffectTables tables_;
    std::atomic<std::size_t> next_ = 0;
    std::vector<Problem> problems_;  // each written by the thread that took the picture
    std::mutex mutex_;               // guards what follows
    ProgressBar bar_;
    int done_ = 0;
};

}  // namespace

Problem DevelopFolder(const Recipe& recipe, const std::string& inputFolder,
                      const std::string& outputFolder, BatchReport& report) {
    std::vector<std::string> names;
    Problem problem = ListPictures(inputFolder, names);
    if (problem.empty()) problem = MakeFolder(outputFolder, inputFolder);
    if (!problem.empty()) return problem;
    Job job(recipe, inputFolder, outputFolder, std::move(names));
    {
        // Two more than processors, to use them while others wait for the disk.
        std::vector<std::jthread> threads(std::thread::hardware_concurrency() + 2);
        for (std::jthread& thread : threads) thread = std::jthread([&job] { job.Work(); });
    }
    job.Report(report);
    return {};
}

}  // namespace Kivo::Tools
