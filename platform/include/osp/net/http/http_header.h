// The header fields of a request.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include <osp/base/result.h>
#include <osp/base/string.h>

namespace Osp::Net::Http {

class HttpHeader {
  public:
    /// Sent after those that were added before, written as given. kInvalidArgument, changing
    /// nothing, for a name that is no token and for a value with control characters in it.
    result AddField(const Base::String& name, const Base::String& value);
    /// In UTF-8, in their order.
    const std::vector<std::pair<std::string, std::string>>& GetFields() const { return fields_; }

  private:
    std::vector<std::pair<std::string, std::string>> fields_;
};

}  // namespace Osp::Net::Http
