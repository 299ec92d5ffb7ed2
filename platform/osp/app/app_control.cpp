#include <chrono>
#include <string_view>

#include <osp/app/app_control.h>
#include <osp/app/app_manager.h>
#include <osp/ui/controls/message_box.h>

#include "osp/app/lifecycle.h"
#include "osp/app/mail_program.h"
#include "osp/base/event_loop.h"
#include "osp/io/storage_map.h"

namespace Osp::App {

namespace {

constexpr int kNoticeMs = 5000;
constexpr std::chrono::milliseconds kNoticeDelay{100};

void Notice(const char* text) {
    Ui::Controls::MessageBox box;
    const result r = box.Construct("", text, Ui::Controls::MessageBoxStyle::kOk, kNoticeMs);
    if (Succeeded(r)) (void)box.ShowAndWait();
}

/// Also a hand-over that failed looks to the application as on a phone: away, and back.
void ComeBack(const char* failure) {
    if (!Lifecycle::IsInstalled()) return;
    Lifecycle::Current().PassThroughBackground();
    if (failure == nullptr) return;
    // Once the application has seen to its return, which a box would hold up.
    Base::EventLoop::Current().StartTimer(Base::EventClass::kApplication, kNoticeDelay,
                                          [failure] { Notice(failure); });
}

result Read(const Base::String& argument, Mail& mail) {
    constexpr std::string_view kSubject = "subject:";
    constexpr std::string_view kAttachments = "attachments:";
    const std::string text = argument.ToUtf8();
    if (text.starts_with(kSubject)) mail.subject = text.substr(kSubject.size());
    if (!text.starts_with(kAttachments)) return result::kSuccess;
    const Base::String path(text.substr(kAttachments.size()));
    std::string realPath;
    const result r = Io::StorageMap::Current().Resolve(path, Io::Access::kRead, realPath);
    if (Failed(r)) return result::kInvalidArgument;
    mail.attachments.push_back(realPath);
    return r;
}

}  // namespace

AppControl* AppManager::FindAppControlN(const Base::String& appControlId,
                                        const Base::String& operationId) {
    if (appControlId != APPCONTROL_EMAIL || operationId != OPERATION_EDIT) return nullptr;
    if (MailProgram::IsInstalled() && MailProgram::Current().IsThere()) return new AppControl;
    Base::EventLoop::Current().Post(Base::EventClass::kApplication,
                                    [] { ComeBack("There is no e-mail program."); });
    return nullptr;
}

result AppControl::Start(const Base::Collection::IList* arguments) {
    if (arguments == nullptr) return result::kInvalidArgument;
    Mail mail;
    for (int i = 0; i < arguments->GetCount(); ++i) {
        const auto* const argument = dynamic_cast<const Base::String*>(arguments->GetAt(i));
        const result r = argument == nullptr ? result::kInvalidArgument : Read(*argument, mail);
        if (Failed(r)) return r;
    }
    MailProgram::Current().Begin(mail, [](bool isStarted) {
        ComeBack(isStarted ? nullptr : "The e-mail program\ncould not be started.");
    });
    return result::kSuccess;
}

}  // namespace Osp::App
