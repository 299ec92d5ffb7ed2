#include <chrono>
#include <gio/gio.h>
#include <string>

#include "osp/base/owner.h"
#include "tests/backends/http/http_fixture.h"

namespace Osp::Http {
namespace {

using Calls = std::vector<std::string>;

TEST_F(HttpBackendTest, OnlyAServerThatIsWhoItSaysIsTrusted) {
    Get(Secure(), "/");
    EXPECT_EQ(heard_.calls.back(), "completed");
    for (const char* certificate : {"wrong", "expired", "foreign", "old"}) {
        SetFault({{"certificate", certificate}}, "*");
        Get(Secure(), "/");
        EXPECT_EQ(heard_.calls, Calls{"aborted"}) << certificate;
        EXPECT_EQ(heard_.reason, result::kUntrusted) << certificate;
    }
    SetFault({{"certificate", "good"}}, "*");
    // Nothing was sent to the others.
    EXPECT_EQ(ThePeers().Received().size(), 1U);
    Get("https://127.0.0.1" + Secure().substr(Secure().rfind(':')), "/");
    EXPECT_EQ(heard_.calls.back(), "completed");
}

TEST_F(HttpBackendTest, WithoutTheFileOfAuthoritiesThePeersAreStrangers) {
    options_.trust.authorityFile = "";
    Get(Secure(), "/");
    EXPECT_EQ(heard_.reason, result::kUntrusted);
}

TEST_F(HttpBackendTest, ServerThatIsNotThereIsSaidSo) {
    const Base::Owner<GSocketListener, g_object_unref> listener(g_socket_listener_new());
    const auto port = g_socket_listener_add_any_inet_port(listener.get(), nullptr, nullptr);
    const std::string address = "localhost:" + std::to_string(port);
    // It takes the connection and never says who it is.
    options_.connectLimit = std::chrono::milliseconds(300);
    Get("https://" + address, "/");
    EXPECT_EQ(heard_.reason, result::kTimedOut);
    g_socket_listener_close(listener.get());
    Get("http://" + address, "/");
    EXPECT_EQ(heard_.reason, result::kNotConnected);
}

}  // namespace
}  // namespace Osp::Http
