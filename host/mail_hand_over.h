// Handing a photograph over to the user's e-mail program.
#pragma once

#include "osp/app/mail_program.h"

namespace Host {

/// Inside a sandbox, which has no programs but the application's own, the desktop's e-mail portal;
/// else the program `xdg-email`, which knows the user's choice.
class MailHandOver : public Osp::App::MailProgram {
  public:
    bool IsThere() const override;
    void Begin(const Osp::App::Mail& mail, std::function<void(bool)> done) override;
};

}  // namespace Host
