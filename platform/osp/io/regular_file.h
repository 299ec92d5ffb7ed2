// Files of the platform's own, read whole.
#pragma once

#include <string>

#include <osp/base/result.h>

namespace Osp::Io {

/// Reads the file at the real path `path`. What is no regular file is kInvalidFormat and is not
/// waited for; kFileNotFound and the other codes of File leave `content` unspecified. Any thread.
result ReadRegularFile(const std::string& path, std::string& content);

}  // namespace Osp::Io
