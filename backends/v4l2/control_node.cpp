#include "backends/v4l2/control_node.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace Osp::Media {

namespace {

class KernelNode : public ControlNode {
  public:
    explicit KernelNode(int descriptor) : descriptor_(descriptor) {}
    ~KernelNode() override { close(descriptor_); }
    KernelNode(const KernelNode&) = delete;
    KernelNode& operator=(const KernelNode&) = delete;

    bool Do(unsigned long request, void* argument) override {
        int outcome = 0;
        do {
            outcome = ioctl(descriptor_, request, argument);
        } while (outcome != 0 && errno == EINTR);
        return outcome == 0;
    }

  private:
    const int descriptor_;
};

}  // namespace

std::unique_ptr<ControlNode> OpenControlNode(const std::string& file) {
    const int descriptor = open(file.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK);
    return descriptor < 0 ? nullptr : std::make_unique<KernelNode>(descriptor);
}

}  // namespace Osp::Media
