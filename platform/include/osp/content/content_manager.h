// Access to the content database.
#pragma once

#include <osp/base/object.h>
#include <osp/base/result.h>
#include <osp/content/content_info.h>

namespace Osp::Content {

/// Loop thread only; kInvalidState from everything before Construct.
class ContentManager : public Base::Object {
  public:
    /// kInvalidState when constructed already.
    result Construct();

    /// Registers the file that `info` names and fills `info` with what is registered. A file that
    /// is registered already and has not been written since keeps its name and description, which
    /// `info` receives. One that is not, gets those of `info`, and where the description is empty,
    /// the one that the file itself carries, or else the one registered before. kFileNotFound,
    /// kInvalidArgument, kPermissionDenied or kIo leave `info` and the database as they were.
    result CreateContent(ContentInfo& info);

    /// Deletes the file and its registration. A file that has vanished already is no failure.
    /// kObjectNotFound when `id` is not registered; kFileNotFound when its memory card is not
    /// there, kPermissionDenied and kIo leave the registration as it was.
    result DeleteContent(ContentId id);

  private:
    bool isConstructed_ = false;
};

}  // namespace Osp::Content
