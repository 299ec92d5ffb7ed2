// Any texts as the fields of an upload, lines of the input in turn: what a parser reads of the body
// is what was put in.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>

#include "share/upload/multipart_form.h"
#include "tests/share/multipart_parser.h"

namespace {

using Osp::Base::ByteBuffer;
using Osp::Base::String;

std::string Taken(ByteBuffer* bytes) {
    const std::unique_ptr<ByteBuffer> owned(bytes);
    return {owned->Remaining().begin(), owned->Remaining().end()};
}

/// In valid UTF-8, and nothing where there is what ends a name or a value.
String Harmless(const std::string& text, const std::string& boundary) {
    const String valid{std::string_view(text)};
    const std::string bytes = valid.ToUtf8();
    const bool isHarmful = bytes.find_first_of("\"\r") != bytes.npos ||
                           bytes.find('\0') != bytes.npos || bytes.find(boundary) != bytes.npos;
    return isHarmful ? String() : valid;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t count) {
    std::istringstream input(std::string(reinterpret_cast<const char*>(data), count));
    std::string boundary;
    std::getline(input, boundary);
    boundary = Harmless(boundary, "\n").ToUtf8();
    Kivo::MultipartForm form;
    if (Osp::Failed(form.Construct(String(std::string_view(boundary))))) return 0;
    std::map<std::string, std::string> fields;
    std::string name;
    std::string value;
    while (std::getline(input, name) && std::getline(input, value)) {
        const String key = Harmless(name, boundary);
        const String text = Harmless(value, boundary);
        const bool isNew = !key.IsEmpty() && !fields.contains(key.ToUtf8());
        if (Osp::Succeeded(form.AddFormData(key, text)) != isNew) std::abort();
        if (isNew) fields[key.ToUtf8()] = text.ToUtf8();
    }
    if (Osp::Failed(form.SetFile("f", "image/jpeg", "/a"))) std::abort();
    const std::string content(reinterpret_cast<const char*>(data), count / 2);
    if (content.find(boundary) != content.npos) return 0;
    const auto parts = Kivo::Testing::ParseMultipart(
        Taken(form.GetFormsN()) + content + Taken(form.GetLastBoundaryN()), boundary);
    if (!parts || parts->fields != fields || parts->file.content != content) std::abort();
    return 0;
}
