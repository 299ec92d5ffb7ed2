// The program is given its arguments one by one, never through a shell, and the photograph as an
// absolute path, so that no name can be taken for anything else.
//
// xdg-email ends as soon as the e-mail program has taken over, but may as well turn into that
// program. So it counts as started when it is still there after some time, and is left alone from
// then on; only its end is waited for, by the loop, so that it leaves no trace in the process list.
#include "host/mail_hand_over.h"

#include <chrono>
#include <fcntl.h>
#include <gio/gio.h>
#include <gio/gunixfdlist.h>
#include <memory>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>

#include "osp/base/background.h"
#include "osp/base/owner.h"

namespace Host {

namespace {

using Osp::App::Mail;
using Osp::Base::Owner;

constexpr const char* kProgram = "xdg-email";
constexpr const char* kPortal = "org.freedesktop.portal.Desktop";
constexpr const char* kPortalPath = "/org/freedesktop/portal/desktop";
constexpr const char* kPortalInterface = "org.freedesktop.portal.Email";
constexpr int kPortalMs = 5000;
constexpr std::chrono::milliseconds kPatience{3000};
constexpr std::chrono::milliseconds kLook{10};

using Error = Owner<GError, g_error_free>;
using Connection = Owner<GDBusConnection, g_object_unref>;
using Variant = Owner<GVariant, g_variant_unref>;

Connection SessionBus() {
    GError* error = nullptr;
    Connection bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, &error));
    const Error owned(error);
    return bus;
}

/// Whatever is opened is the list's to close.
bool Attach(const std::string& path, GUnixFDList* files, GVariantBuilder* handles) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) return false;
    const int handle = g_unix_fd_list_append(files, file, nullptr);
    close(file);
    if (handle >= 0) g_variant_builder_add(handles, "h", handle);
    return handle >= 0;
}

bool BeginInPortal(const Mail& mail) {
    const Connection bus = SessionBus();
    if (!bus) return false;
    const Owner<GUnixFDList, g_object_unref> files(g_unix_fd_list_new());
    GVariantBuilder handles;
    g_variant_builder_init(&handles, G_VARIANT_TYPE("ah"));
    bool areThere = true;
    for (const std::string& path : mail.attachments) {
        areThere = Attach(path, files.get(), &handles) && areThere;
    }
    GVariantBuilder options;
    g_variant_builder_init(&options, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&options, "{sv}", "subject", g_variant_new_string(mail.subject.c_str()));
    g_variant_builder_add(&options, "{sv}", "attachment_fds", g_variant_builder_end(&handles));
    GVariant* const arguments = g_variant_ref_sink(g_variant_new("(sa{sv})", "", &options));
    const Variant owned(arguments);
    if (!areThere) return false;
    GError* error = nullptr;
    const Variant answer(g_dbus_connection_call_with_unix_fd_list_sync(
        bus.get(), kPortal, kPortalPath, kPortalInterface, "ComposeEmail", arguments,
        G_VARIANT_TYPE("(o)"), G_DBUS_CALL_FLAGS_NONE, kPortalMs, files.get(), nullptr, nullptr,
        &error));
    const Error ownedError(error);
    return answer != nullptr;
}

/// 0 when it could not be started.
GPid Spawn(const Mail& mail) {
    std::vector<std::string> words{kProgram, "--subject", mail.subject};
    for (const std::string& path : mail.attachments) words.insert(words.end(), {"--attach", path});
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    GPid pid = 0;
    GError* error = nullptr;
    const auto flags = static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_DO_NOT_REAP_CHILD |
                                                G_SPAWN_STDOUT_TO_DEV_NULL);
    const bool isStarted = g_spawn_async(nullptr, arguments.data(), nullptr, flags, nullptr,
                                         nullptr, &pid, &error) != FALSE;
    const Error owned(error);
    return isStarted ? pid : 0;
}

struct Attempt {
    bool isStarted = false;
    GPid stillRunning = 0;  // 0: none
};

Attempt BeginInProgram(const Mail& mail) {
    const GPid pid = Spawn(mail);
    if (pid == 0) return {};
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (std::chrono::steady_clock::now() < end) {
        int status = 0;
        if (waitpid(pid, &status, WNOHANG) == pid) {
            return {.isStarted = WIFEXITED(status) && WEXITSTATUS(status) == 0};
        }
        std::this_thread::sleep_for(kLook);
    }
    return {.isStarted = true, .stillRunning = pid};
}

}  // namespace

bool MailHandOver::IsInSandbox() const {
    return access(sandboxMark_.c_str(), F_OK) == 0;
}

bool MailHandOver::IsThere() const {
    if (IsInSandbox()) return SessionBus() != nullptr;
    return Owner<char, g_free>(g_find_program_in_path(kProgram)) != nullptr;
}

void MailHandOver::Begin(const Mail& mail, std::function<void(bool)> done) {
    const auto attempt = std::make_shared<Attempt>();
    Osp::Base::RunInBackground(
        [mail, attempt, isInSandbox = IsInSandbox()] {
            *attempt =
                isInSandbox ? Attempt{.isStarted = BeginInPortal(mail)} : BeginInProgram(mail);
        },
        [attempt, done = std::move(done)] {
            if (attempt->stillRunning != 0) {
                g_child_watch_add(
                    attempt->stillRunning, [](GPid, int, gpointer) {}, nullptr);
            }
            done(attempt->isStarted);
        });
}

}  // namespace Host
