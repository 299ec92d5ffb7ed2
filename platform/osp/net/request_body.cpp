#include "osp/net/request_body.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace Osp::Net::Http {

result RequestBody::Write(std::span<const Base::byte> part) {
    if (!isOpen_) return result::kInvalidState;
    if (part.empty()) return result::kInvalidArgument;
    if (part.size() > Missing()) return result::kOutOfRange;
    held_.insert(held_.end(), part.begin(), part.end());
    if (!written_) return result::kSuccess;
    isOpen_ = isAsked_ = false;
    written_();
    return result::kSuccess;
}

void RequestBody::Submit(std::uint64_t length, std::function<void()> written) {
    assert(written && length >= Written());
    length_ = length;
    written_ = std::move(written);
    isOpen_ = false;
}

bool RequestBody::AskForMore() {
    if (isAsked_ || Held() > 0 || Missing() == 0) return false;
    isAsked_ = true;
    return true;
}

std::size_t RequestBody::Take(std::span<Base::byte> out) {
    const std::size_t size = std::min(out.size(), Held());
    std::ranges::copy(std::span(held_).subspan(offset_, size), out.begin());
    offset_ += size;
    taken_ += size;
    if (Held() == 0) {
        held_.clear();
        offset_ = 0;
    }
    return size;
}

}  // namespace Osp::Net::Http
