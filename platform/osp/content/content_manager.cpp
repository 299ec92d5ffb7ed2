#include <osp/content/content_manager.h>

#include "osp/base/out_of_memory.h"
#include "osp/content/content_store.h"

namespace Osp::Content {

result ContentManager::Construct() {
    if (isConstructed_) return result::kInvalidState;
    isConstructed_ = true;
    return result::kSuccess;
}

result ContentManager::CreateContent(ContentInfo& info) {
    if (!isConstructed_) return result::kInvalidState;
    ContentRecord record;
    const result r = Base::OrOutOfMemory([&] {
        return ContentStore::Current().Register(info.GetContentPath(), info.GetContentName(),
                                                info.GetDescription(), record);
    });
    if (Succeeded(r)) info.Adopt(record);
    return r;
}

result ContentManager::DeleteContent(ContentId id) {
    return isConstructed_ ? ContentStore::Current().Delete(id) : result::kInvalidState;
}

}  // namespace Osp::Content
