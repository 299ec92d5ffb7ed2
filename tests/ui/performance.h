// A phone that plays a script and is watched all the while.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/support/phone.h"
#include "tests/ui/monkey.h"

namespace Kivo::Testing {

inline constexpr int kCameraTypes = 6;

/// What came of a script.
struct Outcome {
    std::string complaint;             // the first; empty when all is well
    std::vector<std::string> lines;    // what was done, as a script
    std::vector<std::size_t> screens;  // after each line
    std::map<std::string, std::size_t> files;
};

/// What each control that is shown looks like, by its name.
using Looks = std::map<std::string, std::size_t>;

/// Plays `script` on a fresh phone, puts the phone in order afterwards and takes a photograph.
class Performance {
  public:
    Performance(int cameraType, const std::vector<std::string>& script);

    const Outcome& GetOutcome() const { return outcome_; }

  private:
    void Do(const std::string& command);
    void Do(std::initializer_list<std::string> commands);
    void Complain(const std::string& reason);
    void WatchBackground(bool hasStored);
    bool IsCapturing();
    void PutInOrder();
    void ExpectTrueControls();
    void TakeAPhotograph();
    void ExpectShutterSounds();
    void CollectFiles();
    Looks Look();
    Looks LookAtHelp();
    void Compare(const Looks& a, const Looks& b, const std::string& reason);

    Outcome outcome_;
    int cameraType_;
    Phone phone_;
    Known known_;
    Looks help_;  // when nothing has happened yet
    std::string looksComplaint_;
};

}  // namespace Kivo::Testing
