// Where the lines of a script come from.
#pragma once

#include <memory>
#include <string>

#include "host/outcome.h"
#include "host/script/script_queue.h"

namespace Host {

/// Keeps filling a queue for as long as it lives.
class ScriptFile {
  public:
    virtual ~ScriptFile() = default;
};

/// All lines of a file, or with "-" those of standard input as they arrive; a byte order mark at
/// the start is skipped. Of a line that is too long to be a command only a part is kept. Fails when
/// the file cannot be read. `queue` outlives what is returned.
Outcome<std::unique_ptr<ScriptFile>> OpenScript(const std::string& path, ScriptQueue& queue);

}  // namespace Host
