#include "share/upload/file_form_data.h"

namespace Kivo {

using Osp::Base::String;

result FileFormData::Construct(const String& name, const String& contentType,
                               const String& filePath) {
    if (name.IsEmpty() || contentType.IsEmpty() || filePath.IsEmpty()) {
        return result::kInvalidArgument;
    }
    name_ = name;
    contentType_ = contentType;
    filePath_ = filePath;
    return result::kSuccess;
}

}  // namespace Kivo
