#include "share/upload/multipart_form.h"

#include <limits>

#include <osp/io/file.h>

#include "share/text/bytes.h"

namespace Kivo {

using Osp::Base::ByteBuffer;
using Osp::Base::String;

namespace {

constexpr const char* kLineEnd = "\r\n";
constexpr int kFieldCapacity = 16;
constexpr float kLoadFactor = 0.75F;
constexpr unsigned long kUnknownSize = std::numeric_limits<unsigned long>::max();

void AppendField(String& body, const String& delimiter, const String& name, const String& value) {
    body.Append(delimiter).Append(kLineEnd);
    body.Append("Content-Disposition: form-data; name=\"").Append(name).Append("\"");
    body.Append(kLineEnd).Append(kLineEnd).Append(value).Append(kLineEnd);
}

// The file's name is deliberately its whole path.
void AppendFile(String& body, const String& delimiter, const FileFormData& file) {
    body.Append(delimiter).Append(kLineEnd);
    body.Append("Content-Disposition: form-data; name=\"").Append(file.GetName());
    body.Append("\"; filename=\"").Append(file.GetFilePath()).Append("\"").Append(kLineEnd);
    body.Append("Content-Type: ").Append(file.GetContentType()).Append(kLineEnd).Append(kLineEnd);
}

}  // namespace

MultipartForm::~MultipartForm() {
    fields_.RemoveAll(true);
}

result MultipartForm::Construct(const String& boundary) {
    if (boundary.IsEmpty()) return result::kInvalidArgument;
    const result r = fields_.Construct(kFieldCapacity, kLoadFactor);
    boundary_ = boundary;
    delimiter_ = "--";
    delimiter_.Append(boundary);
    closingDelimiter_ = delimiter_;
    closingDelimiter_.Append("--");
    return Osp::Failed(r) ? result::kMapConstruction : result::kSuccess;
}

result MultipartForm::AddFormData(const String& name, const String& value) {
    if (name.IsEmpty()) return result::kInvalidArgument;
    auto key = std::make_unique<String>(name);
    auto copy = std::make_unique<String>(value);
    if (Osp::Failed(fields_.Add(key.get(), copy.get()))) return result::kInvalidArgument;
    (void)key.release();
    (void)copy.release();
    return result::kSuccess;
}

result MultipartForm::SetFile(const String& name, const String& contentType,
                              const String& filePath) {
    if (name.IsEmpty() && contentType.IsEmpty() && filePath.IsEmpty()) {
        return result::kInvalidArgument;
    }
    file_ = std::make_unique<FileFormData>();
    const result r = file_->Construct(name, contentType, filePath);
    if (Osp::Failed(r)) file_.reset();
    return r;
}

String MultipartForm::GetContentType() const {
    return String("multipart/form-data; boundary=").Append(boundary_);
}

ByteBuffer* MultipartForm::GetFormsN() const {
    String body;
    const std::unique_ptr<Osp::Base::Collection::IList> names(fields_.GetKeysN());
    for (int i = 0; names && i < names->GetCount(); ++i) {
        const auto& name = *static_cast<const String*>(names->GetAt(i));
        AppendField(body, delimiter_, name, *static_cast<const String*>(fields_.GetValue(name)));
    }
    if (file_) AppendFile(body, delimiter_, *file_);
    return Utf8BytesOf(body).release();
}

ByteBuffer* MultipartForm::GetLastBoundaryN() const {
    String end(kLineEnd);
    return Utf8BytesOf(end.Append(closingDelimiter_).Append(kLineEnd)).release();
}

unsigned long MultipartForm::GetSize() const {
    Osp::Io::FileAttributes attributes;
    if (!file_ || Osp::Failed(Osp::Io::File::GetAttributes(file_->GetFilePath(), attributes))) {
        return kUnknownSize;
    }
    const std::unique_ptr<ByteBuffer> forms(GetFormsN());
    const std::unique_ptr<ByteBuffer> last(GetLastBoundaryN());
    if (!forms || !last) return kUnknownSize;
    return static_cast<unsigned long>(forms->GetRemaining()) +
           static_cast<unsigned long>(attributes.GetFileSize()) +
           static_cast<unsigned long>(last->GetRemaining());
}

}  // namespace Kivo
