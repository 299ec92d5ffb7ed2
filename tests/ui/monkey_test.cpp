// Random scripts, each played twice.
#include "tests/ui/monkey.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <map>

#include "tests/ui/performance.h"

namespace Kivo {
namespace {

using namespace Testing;

constexpr int kScripts = 6;  // about ten seconds

/// The outcome of a run, with a complaint also when a second run has another.
Outcome Judge(int cameraType, const std::vector<std::string>& script) {
    Outcome outcome = Perform(cameraType, script);
    if (!outcome.complaint.empty()) return outcome;
    const Outcome again = Perform(cameraType, script);
    if (outcome.screens != again.screens) outcome.complaint = "another screen the second time";
    if (outcome.files != again.files) outcome.complaint = "other files the second time";
    return outcome;
}

/// Takes away what is not needed for the same complaint.
Outcome Shorten(int cameraType, std::vector<std::string> script, Outcome outcome) {
    for (std::size_t count = script.size() / 2; count > 0; count /= 2) {
        for (std::size_t at = 0; at + count <= script.size();) {
            std::vector<std::string> shorter = script;
            const auto from = shorter.begin() + static_cast<std::ptrdiff_t>(at);
            shorter.erase(from, from + static_cast<std::ptrdiff_t>(count));
            Known known;
            std::erase_if(shorter, [&known](const std::string& c) { return !Follow(c, known); });
            const Outcome other = Judge(cameraType, shorter);
            if (other.complaint != outcome.complaint) {
                at += count;
                continue;
            }
            script = shorter;
            outcome = other;
        }
    }
    return outcome;
}

constexpr const char* kPreparation = R"(
# Before it:  mkdir -p DIR/kivo-camera
#             printf '%s\n' '[Registry]' Version=1 Count=3 '[Texts]' CAM_TYPE=TYPE '[Numbers]' \
#                 CAPTURE_WIDTH=640 CAPTURE_HEIGHT=480 > DIR/kivo-camera/registry.ini
# Then:       kivo-camera --headless --data DIR --script THIS
)";

/// As a file that the program runs.
std::string Replayable(int cameraType, const Outcome& outcome) {
    std::string text = "# " + outcome.complaint + "; TYPE " + std::to_string(cameraType);
    text += kPreparation;
    for (const std::string& line : outcome.lines) text += line + "\n";
    return text;
}

unsigned Asked(const char* variable, unsigned otherwise) {
    const char* const asked = std::getenv(variable);
    return asked == nullptr ? otherwise : static_cast<unsigned>(std::atoi(asked));
}

TEST(RandomScripts, LeaveACameraThatTakesAPhotographWithOnePress) {
    const unsigned first = Asked("KIVO_RANDOM_FIRST", 0);
    const unsigned count = Asked("KIVO_RANDOM_SCRIPTS", kScripts);
    std::map<std::string, std::string> seedsOf;  // complaints
    for (unsigned seed = first; seed < first + count; ++seed) {
        const int cameraType = static_cast<int>(seed % kCameraTypes);
        const std::vector<std::string> script = Monkey(seed).WriteScript();
        const Outcome outcome = Judge(cameraType, script);
        if (outcome.complaint.empty()) continue;
        std::string& seeds = seedsOf[outcome.complaint];
        if (seeds.empty()) {
            ADD_FAILURE() << "as a script:\n"
                          << Replayable(cameraType, Shorten(cameraType, script, outcome));
        }
        seeds += " " + std::to_string(seed);
    }
    for (const auto& [complaint, seeds] : seedsOf) ADD_FAILURE() << complaint << ":" << seeds;
}

}  // namespace
}  // namespace Kivo
