// What a failed system call means to the platform.
#pragma once

#include <osp/base/result.h>

namespace Osp::Io {

/// Never kSuccess.
result ResultOfErrno(int error);

}  // namespace Osp::Io
