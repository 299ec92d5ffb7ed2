// The content database.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <osp/base/result.h>
#include <osp/base/string.h>
#include <osp/content/content_info.h>

#include "osp/base/service.h"

namespace Osp::Io {
class StorageMap;
}

namespace Osp::Content {

class Database;

/// A registered file.
struct ContentRecord {
    ContentId id = 0;
    Base::String name;
    Base::String description;
    int width = 0;  // pixels; 0 for files that do not tell
    int height = 0;
    long long sizeBytes = 0;
    long long dateMs = 0;  // last written, milliseconds since 1970 UTC
};

/// What a file tells about itself.
struct EmbeddedInfo {
    std::string description;
    int width = 0;
    int height = 0;
};

/// Reads a file's own description and pixel size; nothing for a file that has none. The argument
/// is a real path.
using EmbeddedInfoReader = std::function<std::optional<EmbeddedInfo>(const std::string&)>;

/// Keyed by virtual paths. What it holds can be read back from the files, so a damaged database is
/// set aside and a new one begun, and a write that a power cut undoes loses nothing. Two runs that
/// do the same leave the same bytes. Loop thread only.
class ContentStore : public Service<ContentStore> {
  public:
    /// `storage` is not owned and outlives the store, which lies in its private folder. Where that
    /// cannot be written, the store lives in memory.
    ContentStore(Io::StorageMap& storage, EmbeddedInfoReader reader);
    ~ContentStore();
    ContentStore(const ContentStore&) = delete;
    ContentStore& operator=(const ContentStore&) = delete;

    /// Whether there was a database that could not be used.
    bool WasDamaged() const { return wasDamaged_; }
    /// Whether there is one of a newer version. It is left alone, and the store lives in memory.
    bool IsNewer() const { return isNewer_; }
    /// Whether the database was begun by this object, so that it lacks the files that are there.
    bool IsNew() const { return isNew_; }

    /// As ContentManager::CreateContent, with `name` and `description` for a file that is new;
    /// `record` is what is registered then.
    result Register(const Base::String& path, const Base::String& name,
                    const Base::String& description, ContentRecord& record);

    /// What is registered, or else what Register would, without writing anything.
    result Describe(const Base::String& path, ContentRecord& record);

    /// As ContentManager::DeleteContent.
    result Delete(ContentId id);

  private:
    struct Answer;
    result Look(const Base::String& path, const Base::String& name, const Base::String& description,
                Answer& answer);

    Io::StorageMap& storage_;
    EmbeddedInfoReader reader_;
    std::unique_ptr<Database> database_;
    bool wasDamaged_ = false;
    bool isNewer_ = false;
    bool isNew_ = false;
};

}  // namespace Osp::Content
