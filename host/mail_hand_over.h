// Handing a photograph over to the user's e-mail program.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "osp/app/mail_program.h"

namespace Host {

/// Inside a sandbox, which has no programs but the application's own, the desktop's e-mail portal;
/// else the program `xdg-email`, which knows the user's choice.
class MailHandOver : public Osp::App::MailProgram {
  public:
    /// A file at `sandboxMark` says that the program is inside a sandbox.
    explicit MailHandOver(std::string sandboxMark = "/.flatpak-info")
        : sandboxMark_(std::move(sandboxMark)) {}

    bool IsThere() const override;
    void Begin(const Osp::App::Mail& mail, std::function<void(bool)> done) override;

  private:
    bool IsInSandbox() const;

    std::string sandboxMark_;
};

}  // namespace Host
