// A folder for what passes through, which nobody else reads.
#pragma once

#include <string>

namespace Osp::Web {

/// In memory where the user has such a place. Removed with all that is in it at the end; where that
/// was a crash, by the next RemoveOrphans.
class PrivateFolder {
  public:
    PrivateFolder();
    ~PrivateFolder();
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;

    /// Empty when it could not be made.
    const std::string& Path() const { return path_; }

    /// Removes what processes have left that are no more.
    static void RemoveOrphans();

  private:
    std::string path_;
};

}  // namespace Osp::Web
