// The e-mail program of the system.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "osp/base/service.h"

namespace Osp::App {

/// A message that is to be begun.
struct Mail {
    std::string subject;
    std::vector<std::string> attachments;  // real paths
};

/// The host's. Loop thread only.
class MailProgram : public Service<MailProgram> {
  public:
    virtual ~MailProgram() = default;
    /// Whether something is there that could be started.
    virtual bool IsThere() const = 0;
    /// Starts it off the loop and then calls `done` on it, once.
    virtual void Begin(const Mail& mail, std::function<void(bool isStarted)> done) = 0;
};

}  // namespace Osp::App
