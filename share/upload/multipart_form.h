// The body of an upload: fields and a file.
#pragma once

#include <memory>

#include <osp/base/byte_buffer.h>
#include <osp/base/collection/hash_map.h>
#include <osp/base/object.h>
#include <osp/base/result.h>
#include <osp/base/string.h>

#include "share/upload/file_form_data.h"

namespace Kivo {

/// "multipart/form-data" in UTF-8. The body is GetFormsN, then the file's bytes, then
/// GetLastBoundaryN, and nothing else. Names and values go in as they are: they must not hold the
/// delimiter, and names no quotation marks. Loop thread only.
class MultipartForm : public Osp::Base::Object {
  public:
    MultipartForm() = default;
    ~MultipartForm() override;
    MultipartForm(const MultipartForm&) = delete;
    MultipartForm& operator=(const MultipartForm&) = delete;

    /// kInvalidArgument, changing nothing, for an empty boundary; kMapConstruction when constructed
    /// already and without the memory, with the new boundary in effect.
    result Construct(const Osp::Base::String& boundary);

    /// `value` may be empty. kInvalidArgument, changing nothing, for an empty name, one that the
    /// form has already, and before construction.
    result AddFormData(const Osp::Base::String& name, const Osp::Base::String& value);
    /// Replaces the file. kInvalidArgument when any of them is empty: the form has no file then.
    /// With all of them empty it stays as it is.
    result SetFile(const Osp::Base::String& name, const Osp::Base::String& contentType,
                   const Osp::Base::String& filePath);

    /// For the header.
    Osp::Base::String GetContentType() const;
    /// What goes before the file's bytes: the fields, in no order that means anything, and the
    /// file's own header. A new buffer, the caller's, all of which remains; null without the
    /// memory.
    Osp::Base::ByteBuffer* GetFormsN() const;
    /// What goes after them; the same.
    Osp::Base::ByteBuffer* GetLastBoundaryN() const;
    /// Of the whole body, in bytes; the largest number there is without a file, or one that can be
    /// looked at.
    unsigned long GetSize() const;

  private:
    Osp::Base::String boundary_;
    Osp::Base::String delimiter_;
    Osp::Base::String closingDelimiter_;
    Osp::Base::Collection::HashMap fields_;  // owns keys and values, Strings both
    std::unique_ptr<FileFormData> file_;     // null: none
};

}  // namespace Kivo
