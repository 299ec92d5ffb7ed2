// The camera program as a process of its own.
#pragma once

#include <initializer_list>
#include <map>
#include <string>
#include <vector>

#include "osp/base/owner.h"

typedef struct _GSubprocess GSubprocess;

namespace Kivo::Testing {

struct ProgramResult {
    int exitCode = -1;  // -1 when a signal ended it
    std::string output;
    std::string errors;
};

/// Where the programs are that were built with the tests.
std::string ProgramFolder();

/// kivo-camera with `arguments`; what it prints is kept.
class CameraProgram {
  public:
    /// `environment` comes on top of the test's own; `program` is seen from the programs' folder.
    explicit CameraProgram(const std::vector<std::string>& arguments,
                           const std::map<std::string, std::string>& environment = {},
                           const std::string& program = "kivo-camera");
    /// Kills it if it still runs.
    ~CameraProgram();
    CameraProgram(const CameraProgram&) = delete;
    CameraProgram& operator=(const CameraProgram&) = delete;

    /// While it runs.
    int Id() const;
    bool HasEnded() const;
    /// One line of a script that is read from standard input.
    void Send(const std::string& line);
    /// The next line that it prints; empty at the end.
    std::string ReadLine();
    void Kill();
    /// Closes its input and waits for its end.
    ProgramResult Finish();

  private:
    static void End(GSubprocess* process);

    Osp::Base::Owner<GSubprocess, End> process_;
};

/// Runs `lines` headless, with `arguments` beside, to their end.
ProgramResult RunScript(const std::vector<std::string>& arguments,
                        std::initializer_list<const char*> lines);

}  // namespace Kivo::Testing
