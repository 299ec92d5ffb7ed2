// Another program that does something for this one.
#pragma once

#include <osp/base/collection/ilist.h>
#include <osp/base/object.h>
#include <osp/base/result.h>

namespace Osp::App {

/// The program for e-mail, and that it is to begin a new message.
inline constexpr const char* APPCONTROL_EMAIL = "osp.appcontrol.email";
inline constexpr const char* OPERATION_EDIT = "osp.operation.edit";

/// Found by AppManager. Loop thread only.
class AppControl : public Base::Object {
  public:
    /// Hands over to the program with strings of the form "key:value": for e-mail "subject:", and
    /// "attachments:" with the virtual path of a file, any number of them; others mean nothing. The
    /// list stays the caller's. The application is sent to the background and back to the
    /// foreground once the program has been started or could not be, which the user is told.
    /// kInvalidArgument for null and for attachments that lie nowhere; then nothing else happens.
    result Start(const Base::Collection::IList* arguments);

  private:
    friend class AppManager;

    AppControl() = default;
};

}  // namespace Osp::App
