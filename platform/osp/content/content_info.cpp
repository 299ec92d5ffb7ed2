#include <osp/content/content_info.h>
#include <osp/content/image_content_info.h>
#include <osp/io/file.h>

#include "osp/content/content_store.h"

namespace Osp::Content {

result ContentInfo::Construct(const Base::String& path, const Base::String& name, bool mustExist) {
    if (path.IsEmpty()) return result::kInvalidArgument;
    Io::FileAttributes attributes;
    if (mustExist) {
        const result r = Io::File::GetAttributes(path, attributes);
        if (Failed(r)) return r;
    }
    path_ = path;
    name_ = name;
    return result::kSuccess;
}

void ContentInfo::Adopt(const ContentRecord& record) {
    id_ = record.id;
    name_ = record.name;
    description_ = record.description;
    sizeBytes_ = record.sizeBytes;
    dateMs_ = record.dateMs;
}

void ImageContentInfo::Adopt(const ContentRecord& record) {
    ContentInfo::Adopt(record);
    width_ = record.width;
    height_ = record.height;
}

}  // namespace Osp::Content
