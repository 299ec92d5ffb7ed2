// A device file of the kernel's, as far as controls need it.
#pragma once

#include <memory>
#include <string>

namespace Osp::Media {

class ControlNode {
  public:
    virtual ~ControlNode() = default;
    /// As ioctl, but that it returns whether the kernel did it.
    virtual bool Do(unsigned long request, void* argument) = 0;
};

/// Opened beside whoever takes the pictures; null when it cannot be.
std::unique_ptr<ControlNode> OpenControlNode(const std::string& file);

}  // namespace Osp::Media
