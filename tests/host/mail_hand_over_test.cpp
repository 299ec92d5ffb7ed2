#include "host/mail_hand_over.h"

#include <array>
#include <gio/gunixfdlist.h>
#include <gtest/gtest.h>
#include <mutex>
#include <optional>
#include <unistd.h>

#include "osp/base/owner.h"
#include "tests/support/programs/fake_service.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/test_loop.h"

namespace Host {
namespace {

using Osp::Base::Owner;

/// A desktop's portal that begins messages, or does not.
class FakeMailPortal : public Kivo::Testing::FakeService {
  public:
    FakeMailPortal() : FakeService("org.freedesktop.portal.Desktop") {}
    ~FakeMailPortal() { Leave(); }

    std::atomic<bool> isWilling = true;

    std::string Subject() const { return Locked(subject_); }
    /// What stands in the file that was attached.
    std::string Attached() const { return Locked(attached_); }

  private:
    bool OnCall(GDBusMessage* call) override {
        if (g_strcmp0(g_dbus_message_get_member(call), "ComposeEmail") != 0) return false;
        Read(call);
        GDBusMessage* const reply =
            isWilling ? g_dbus_message_new_method_reply(call)
                      : g_dbus_message_new_method_error_literal(call, "org.example.No", "no");
        if (isWilling) g_dbus_message_set_body(reply, g_variant_new("(o)", "/request"));
        Send(reply);
        return true;
    }
    void Read(GDBusMessage* call) {
        const std::lock_guard guard(mutex_);
        const Owner<GVariant, g_variant_unref> options(
            g_variant_get_child_value(g_dbus_message_get_body(call), 1));
        const char* subject = "";
        (void)g_variant_lookup(options.get(), "subject", "&s", &subject);
        subject_ = subject;
        GUnixFDList* const files = g_dbus_message_get_unix_fd_list(call);
        const int file = files == nullptr ? -1 : g_unix_fd_list_get(files, 0, nullptr);
        std::array<char, 100> bytes{};
        const ssize_t count = file < 0 ? 0 : read(file, bytes.data(), bytes.size());
        attached_.assign(bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        if (file >= 0) close(file);
    }
    std::string Locked(const std::string& text) const {
        const std::lock_guard guard(mutex_);
        return text;
    }

    mutable std::mutex mutex_;
    std::string subject_;
    std::string attached_;
};

TEST(MailHandOverTest, InASandboxThePortalBeginsTheMessageOrDoesNot) {
    FakeMailPortal portal;
    Osp::Testing::TestLoop loop;
    const Osp::Testing::TemporaryFolder folder;
    Osp::Testing::WriteText(folder / "mark", "");
    Osp::Testing::WriteText(folder / "photo.jpg", "the photograph");
    MailHandOver mail(folder / "mark");
    EXPECT_TRUE(mail.IsThere());
    const auto begin = [&](const std::string& photograph) {
        std::optional<bool> outcome;
        mail.Begin({"KIVO", {folder / photograph}}, [&](bool isStarted) { outcome = isStarted; });
        loop.Loop().RunUntil([&] { return outcome.has_value(); });
        return *outcome;
    };
    EXPECT_TRUE(begin("photo.jpg"));
    EXPECT_EQ(portal.Subject(), "KIVO");
    EXPECT_EQ(portal.Attached(), "the photograph");
    EXPECT_FALSE(begin("gone.jpg"));
    portal.isWilling = false;
    EXPECT_FALSE(begin("photo.jpg"));
}

}  // namespace
}  // namespace Host
