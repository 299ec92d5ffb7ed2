// Reads the bodies of uploads.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace Kivo::Testing {

struct MultipartParts {
    struct File {
        std::string header;  // from the disposition's value to the end of the part's header
        std::string content;
    };
    std::map<std::string, std::string> fields;
    File file;  // with an empty header: none
};

/// None for anything but fields with different names and at most one file, the last of them.
inline std::optional<MultipartParts> ParseMultipart(std::string_view body,
                                                    const std::string& boundary) {
    constexpr std::string_view kDisposition = "Content-Disposition: ";
    constexpr std::string_view kField = "form-data; name=\"";
    MultipartParts parts;
    std::string delimiter = "--" + boundary;
    while (parts.file.header.empty() && body.starts_with(delimiter + "\r\n")) {
        body.remove_prefix(delimiter.size() + 2);
        const std::size_t headerEnd = body.find("\r\n\r\n");
        if (!body.starts_with(kDisposition) || headerEnd == body.npos) return std::nullopt;
        const std::string_view header =
            body.substr(kDisposition.size(), headerEnd - kDisposition.size());
        body.remove_prefix(headerEnd + 4);
        const std::size_t end = body.find("\r\n" + delimiter);
        if (end == body.npos || !header.starts_with(kField)) return std::nullopt;
        const std::string content(body.substr(0, end));
        body.remove_prefix(end + 2);
        if (header.find("\"; filename=") != header.npos) {
            parts.file = {std::string(header), content};
        } else {
            const std::string name(header.substr(kField.size(), header.size() - kField.size() - 1));
            if (!parts.fields.emplace(name, content).second) return std::nullopt;
        }
    }
    if (body != delimiter + "--\r\n") return std::nullopt;
    return parts;
}

}  // namespace Kivo::Testing
