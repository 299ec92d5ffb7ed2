// Taking a name in a folder without taking anything from whoever has it.
#pragma once

#include <string>

#include <osp/base/result.h>

namespace Osp::Io {

/// Renames `from` to `to`, both in the open folder `folder` or real paths with AT_FDCWD, and never
/// replaces: kKeyAlreadyExists, whoever took the name and whenever. Where the file system cannot do
/// that in one step, those who call this take turns. Any thread.
result RenameNew(int folder, const char* from, const char* to);

/// Renames the file `name` in the open folder `folder` to "old-N-NAME", where N is 1 or follows the
/// highest there is; `aside` is then the name that it has got. kFileNotFound when it is not there.
/// Any thread.
result MoveAside(int folder, const std::string& name, std::string& aside);

}  // namespace Osp::Io
