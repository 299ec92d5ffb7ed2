#include "osp/io/errno_result.h"

#include <cerrno>

namespace Osp::Io {

result ResultOfErrno(int error) {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
        case ENODEV:
        case ENXIO:
            return result::kFileNotFound;
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return result::kStorageFull;
        case EACCES:
        case EPERM:
        case EROFS:
            return result::kPermissionDenied;
        case EEXIST:
            return result::kKeyAlreadyExists;
        case ENAMETOOLONG:
        case EINVAL:
            return result::kInvalidArgument;
        default:
            return result::kIo;
    }
}

}  // namespace Osp::Io
