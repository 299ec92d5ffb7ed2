// What a process has to put right about itself before anything else runs.
#pragma once

namespace Host {

/// Repairs what the process was started with:
/// - standard input, output and error that are closed become /dev/null, so that no photograph's
///   descriptor is taken for one of them;
/// - a file that may not grow and a pipe that nobody reads are errors where they occur, not the
///   process's end;
/// - threads share one heap, so that an address space that is limited holds more photographs;
/// - HOME and the XDG base folders count only when they are absolute paths.
/// Before any thread is started.
void PrepareProcess();

/// Writes out what was printed. Returns `exitCode`, or a failure's when some of it could not be
/// written, which it says on standard error.
int FinishOutput(int exitCode);

}  // namespace Host
