// The program: the command line, then one photograph, a folder or a contact sheet.
#include <cstdio>
#include <new>

#include "batch.h"
#include "contact_sheet.h"
#include "effect_tables.h"
#include "options.h"
#include "picture_files.h"

namespace Kivo::Tools {

namespace {

int Report(const Problem& problem) {
    if (problem.empty()) return 0;
    std::fprintf(stderr, "kivo-develop: %s\n", problem.c_str());
    return 1;
}

Problem DevelopPhotograph(const Options& options) {
    Effects::EffectTables tables;
    Developer developer(tables, true);
    return DevelopFiles(developer, options.recipe, options.inputs, options.output);
}

int RunBatch(const Options& options) {
    BatchReport report;
    const Problem problem =
        DevelopFolder(options.recipe, options.inputs[0], options.output, report);
    if (!problem.empty()) return Report(problem);
    std::printf("%d developed, %zu failed\n", report.developed, report.problems.size());
    std::fflush(stdout);  // before what went wrong
    for (const Problem& each : report.problems) Report(each);
    return report.problems.empty() ? 0 : 1;
}

int Run(const Options& options) try {
    switch (options.mode) {
        case Mode::kPhotograph:
            return Report(DevelopPhotograph(options));
        case Mode::kBatch:
            return RunBatch(options);
        case Mode::kSheet:
            return Report(MakeContactSheet(options.recipe, options.inputs, options.output));
    }
    return 1;
} catch (const std::bad_alloc&) {
    return Report("not enough memory");
}

}  // namespace

}  // namespace Kivo::Tools

int main(int argc, char** argv) {
    const Kivo::Tools::Parsed parsed = Kivo::Tools::ParseCommandLine(argc, argv);
    return parsed.exitCode ? *parsed.exitCode : Kivo::Tools::Run(parsed.options);
}
