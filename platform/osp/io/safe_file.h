// Writing files that are there whole or not at all.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <sys/types.h>

#include <osp/base/byte_buffer.h>
#include <osp/base/result.h>

namespace Osp::Io {

/// What becomes of a file that stands where the new one goes.
enum class Replace {
    kOverwrite,
    kKeepOld,  ///< it stays in the folder as "old-1-NAME", or "old-2-NAME" and so on
    kRefuse,   ///< it stays: kKeyAlreadyExists, however late it came
};

struct SafeFileOptions {
    Replace replace = Replace::kOverwrite;
    /// Permissions: of a new file less the process's mask, otherwise those of them that the file
    /// has which is overwritten.
    mode_t mode = 0666;
    /// The date that the file gets, in milliseconds since 1970 UTC; the system's own without.
    std::optional<long long> modifiedMs = std::nullopt;
};

/// Makes the file at the real path `path` hold exactly `bytes`, by way of a temporary with a dot
/// name in the same folder; file and folder are synced when this returns. At every moment, a power
/// cut included, `path` names the whole older file or the whole new one; with kKeepOld it may for
/// a moment name nothing, when the older one has its other name already. With kKeepOld and kRefuse
/// nothing is ever replaced, not even what another process puts there at the same time.
/// kStorageFull, kPermissionDenied, kFileNotFound (the folder has vanished) and kIo leave
/// everything as it was, with one exception: kIo also reports that the folder itself could not be
/// synced after the new file was in place. Any thread.
result WriteFileSafely(const std::string& path, std::span<const Base::byte> bytes,
                       const SafeFileOptions& options = {});
result WriteFileSafely(const std::string& path, std::string_view text,
                       const SafeFileOptions& options = {});

/// The date for new files: the loop's clock while that is virtual, the system's own otherwise.
/// Loop thread only.
std::optional<long long> NewFileDateMs();

/// Removes from the folder at the real path `folder` what writers left that were killed. Those at
/// work, in this process or another, are not disturbed.
void RemoveStaleTemporaries(const std::string& folder);

/// Renames the file or folder at the real path `path` to "PATH.damaged-1", or the next number that
/// is free, and returns whether it could.
bool SetAside(const std::string& path);

}  // namespace Osp::Io
