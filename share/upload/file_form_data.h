// The file in an upload.
#pragma once

#include <osp/base/object.h>
#include <osp/base/result.h>
#include <osp/base/string.h>

namespace Kivo {

class FileFormData : public Osp::Base::Object {
  public:
    /// `name` is the field's; `filePath` is the file's on the device and what the server is told.
    /// kInvalidArgument, changing nothing, when any of them is empty.
    result Construct(const Osp::Base::String& name, const Osp::Base::String& contentType,
                     const Osp::Base::String& filePath);

    const Osp::Base::String& GetName() const { return name_; }
    const Osp::Base::String& GetContentType() const { return contentType_; }
    const Osp::Base::String& GetFilePath() const { return filePath_; }

  private:
    Osp::Base::String name_;
    Osp::Base::String contentType_;
    Osp::Base::String filePath_;
};

}  // namespace Kivo
