// The body of a request between the application, which writes it, and the transport, which takes
// it.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <span>
#include <vector>

#include <osp/base/byte_buffer.h>
#include <osp/base/result.h>

namespace Osp::Net::Http {

/// Holds what has been written and not been taken: after Submit one part at most.
class RequestBody {
  public:
    /// As HttpRequest::WriteBody.
    result Write(std::span<const Base::byte> part);
    std::uint64_t Written() const { return taken_ + Held(); }

    /// From here on there is a length, and each part has to be asked for.
    void Submit(std::uint64_t length, std::function<void()> written);
    /// How much of the body is still to be written.
    std::uint64_t Missing() const { return length_ - Written(); }
    /// True, once for each part, when all that was written has been taken and more is missing.
    bool AskForMore();
    /// The answer to that may be given now.
    void Open() { isOpen_ = true; }

    /// Moves what there is to the beginning of `out` and returns how much.
    std::size_t Take(std::span<Base::byte> out);

  private:
    std::size_t Held() const { return held_.size() - offset_; }

    std::vector<Base::byte> held_;
    std::size_t offset_ = 0;  // of what has been taken from it
    std::uint64_t taken_ = 0;
    std::uint64_t length_ = std::numeric_limits<std::uint64_t>::max();
    bool isOpen_ = true;
    bool isAsked_ = false;
    std::function<void()> written_;  // empty before Submit
};

}  // namespace Osp::Net::Http
