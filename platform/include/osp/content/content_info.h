// A file as the content database describes it.
#pragma once

#include <osp/base/object.h>
#include <osp/base/result.h>
#include <osp/base/string.h>

namespace Osp::Content {

/// Names a registered content for as long as the database lives; 0 is none.
using ContentId = long long;

struct ContentRecord;

/// What an application wants to register and, once ContentManager::CreateContent has succeeded,
/// what is registered. Loop thread only.
class ContentInfo : public Base::Object {
  public:
    /// `path` is the virtual path of a file, `name` a title, or empty for the file's own name. With
    /// `mustExist`, kFileNotFound when there is no such file now; without, that is found out when
    /// the content is created. kInvalidArgument for an empty path. A failure leaves
    /// the object as it was.
    result Construct(const Base::String& path, const Base::String& name, bool mustExist);

    void SetDescription(const Base::String& description) { description_ = description; }

    const Base::String& GetDescription() const { return description_; }
    const Base::String& GetContentPath() const { return path_; }
    const Base::String& GetContentName() const { return name_; }

    /// These are 0 until the content has been created.
    ContentId GetContentId() const { return id_; }
    /// The file's size, in bytes.
    long long GetContentSize() const { return sizeBytes_; }
    /// When the file was last written, in milliseconds since 1970 UTC.
    long long GetDateMs() const { return dateMs_; }

  protected:
    friend class ContentManager;
    /// Of the platform: becomes what the database holds.
    virtual void Adopt(const ContentRecord& record);

  private:
    Base::String path_;
    Base::String name_;
    Base::String description_;
    ContentId id_ = 0;
    long long sizeBytes_ = 0;
    long long dateMs_ = 0;
};

}  // namespace Osp::Content
