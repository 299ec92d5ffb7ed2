// The program: the command line, then one photograph, a folder or a contact sheet.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <glib.h>
#include <new>
#include <string>
#include <system_error>

#include "develop/batch.h"
#include "develop/contact_sheet.h"
#include "develop/options.h"
#include "develop/pictures/picture_files.h"
#include "effects/effect_tables.h"
#include "osp/io/safe_file.h"

namespace Kivo::Tools {

namespace {

/// Names of files may hold anything; on a terminal that could be more than text.
int Report(Problem problem) {
    if (problem.empty()) return 0;
    std::ranges::replace_if(
        problem, [](char c) { return g_ascii_iscntrl(c) != 0; }, '?');
    std::fprintf(stderr, "kivo-develop: %s\n", problem.c_str());
    return 1;
}

int Report(const Outcome& outcome) {
    for (const Problem& warning : outcome.warnings) Report(warning);
    return Report(outcome.problem);
}

/// What runs that were killed have left where the output goes.
void TidyFolderOf(std::string output) {
    if (output == kStandardStream || !FollowLinks(output).empty()) return;
    const std::filesystem::path folder = std::filesystem::path(output).parent_path();
    Osp::Io::RemoveStaleTemporaries(folder.empty() ? "." : folder.string());
}

Outcome DevelopPhotograph(const Options& options) {
    Effects::EffectTables tables;
    Developer developer(tables, true);
    return DevelopFiles(developer, options.recipe, options.inputs, IdsOf(options.inputs),
                        options.output);
}

int RunBatch(const Options& options) {
    BatchReport report;
    const Problem problem =
        DevelopFolder(options.recipe, options.inputs[0], options.output, report);
    if (!problem.empty()) return Report(problem);
    std::printf("%d developed, %zu failed\n", report.developed, report.problems.size());
    std::fflush(stdout);  // before what went wrong
    for (const Problem& each : report.warnings) Report(each);
    for (const Problem& each : report.problems) Report(each);
    if (report.leftOut > 0) {
        Report((report.isDiskFull ? "the disk is full, " : "interrupted, ") +
               std::to_string(report.leftOut) + " left out");
    }
    return report.problems.empty() && report.leftOut == 0 ? 0 : 1;
}

int Run(const Options& options) try {
    switch (options.mode) {
        case Mode::kPhotograph:
            TidyFolderOf(options.output);
            return Report(DevelopPhotograph(options));
        case Mode::kBatch:
            return RunBatch(options);
        case Mode::kSheet:
            TidyFolderOf(options.output);
            return Report(MakeContactSheet(options.recipe, options.inputs, options.output));
    }
    return 1;
} catch (const std::bad_alloc&) {
    return Report("not enough memory");
} catch (const std::system_error& error) {
    return Report(error.what());
}

}  // namespace

}  // namespace Kivo::Tools

int main(int argc, char** argv) {
    const Kivo::Tools::Parsed parsed = Kivo::Tools::ParseCommandLine(argc, argv);
    return parsed.exitCode ? *parsed.exitCode : Kivo::Tools::Run(parsed.options);
}
