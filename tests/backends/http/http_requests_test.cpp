#include <algorithm>
#include <cstdlib>
#include <glib.h>
#include <memory>
#include <string>
#include <unistd.h>

#include "osp/base/owner.h"
#include "tests/backends/http/http_fixture.h"
#include "tests/support/programs/usage.h"
#include "tests/support/sanitizers.h"

namespace Osp::Http {
namespace {

using Calls = std::vector<std::string>;

TEST_F(HttpBackendTest, RequestIsByteForByteWhatWasAskedFor) {
    setenv("http_proxy", "http://127.0.0.1:1", 1);
    setenv("ALL_PROXY", "http://127.0.0.1:1", 1);
    SetFault({{"body", "fine"}, {"headers", {{"Set-Cookie", "id=7"}}}}, "/a/./b");
    OpenSession(Plain());
    Run(Open("/a/./b?q=%23K&r=[1]"));
    EXPECT_EQ(heard_.calls, (Calls{"read", "completed"}));
    EXPECT_EQ(heard_.body, "fine");
    EXPECT_EQ(heard_.status, 200);

    HttpTransaction& post = Open("/a/./b", "x=1&y=2");
    for (const auto& [name, value] : {std::pair("Content-type", "text/odd"),
                                      {"Authorization", "OAuth a=\"b\", c=\"d\""},
                                      {"X-Empty", ""},
                                      {"x-LAST", " spaced  out "}}) {
        ASSERT_EQ(post.GetRequest().GetHeader().AddField(name, value), result::kSuccess);
    }
    Run(post);
    OpenSession(Plain());
    Run(Open("/none", "x"));
    EXPECT_EQ(heard_.status, 405);

    const std::string host = "Host: " + ThePeers().Host("twitpic_web") + "\r\n";
    const Json received = ThePeers().Received();
    ASSERT_EQ(received.size(), 3U);
    EXPECT_EQ(received[0]["head"], "GET /a/./b?q=%23K&r=[1] HTTP/1.1\r\n" + host + "\r\n");
    EXPECT_EQ(received[1]["head"], "POST /a/./b HTTP/1.1\r\n" + host +
                                       "Cookie: id=7\r\n"
                                       "Content-type: text/odd\r\n"
                                       "Authorization: OAuth a=\"b\", c=\"d\"\r\n"
                                       "X-Empty:\r\n"
                                       "x-LAST:  spaced  out \r\n"
                                       "Content-Length: 7\r\n\r\n");
    EXPECT_EQ(received[1]["body"], "x=1&y=2");
    EXPECT_EQ(received[2]["head"], "POST /none HTTP/1.1\r\n" + host + "Content-Length: 1\r\n\r\n");
}

TEST_F(HttpBackendTest, CookiesAreOfTheirSession) {
    SetFault({{"headers", {{"Set-Cookie", "id=7"}}}});
    for (const auto flag :
         {Net::Http::HttpCookieFlag::kNever, Net::Http::HttpCookieFlag::kEnabled}) {
        OpenSession(Secure(), flag);
        Run(Open("/"));
        Run(Open("/"));
    }
    const Json received = ThePeers().Received();
    ASSERT_EQ(received.size(), 4U);
    for (std::size_t i = 0; i < 4; ++i) {
        const std::string head = received[i]["head"];
        EXPECT_EQ(head.find("Cookie: id=7\r\n") != std::string::npos, i == 3) << head;
    }
}

/// The text without end that an upload is made of.
std::string PartAt(std::size_t start, std::size_t size) {
    std::string part(size, ' ');
    for (std::size_t i = 0; i < size; ++i) part[i] = static_cast<char>((start + i) * 31 >> 3);
    return part;
}

TEST_F(HttpBackendTest, UploadIsStreamedAndNothingOfItKept) {
    constexpr std::size_t kSize = 48'000'001;
    constexpr long kAllowedKb = 8 * 1024;
    for (const std::string& address : {Plain(), Secure()}) {
        ThePeers().Control({{"clear", true}});
        SetFault({{"status", 404}}, "/up");
        OpenSession(address);
        Get(address, "/");  // which loads what there is to load
        const long before = Testing::UsageOf(getpid()).memoryKb;
        HttpTransaction& upload = Open("/up", PartAt(0, 100));
        upload.EnableReadyToWrite();
        ASSERT_EQ(upload.GetRequest().GetHeader().AddField("Content-Length",
                                                           Base::String(std::to_string(kSize))),
                  result::kSuccess);
        std::size_t written = 100;
        long most = 0;
        heard_.then = [&](const std::string& report, HttpSession&, HttpTransaction& transaction) {
            if (report != "write") return;
            const auto size = static_cast<std::size_t>(heard_.recommended);
            EXPECT_EQ(transaction.GetRequest().WriteBody(*Testing::BufferOf(PartAt(written, size))),
                      result::kSuccess);
            written += size;
            if (heard_.calls.size() % 100 == 0) {
                most = std::max(most, Testing::UsageOf(getpid()).memoryKb);
            }
        };
        Run(upload);
        heard_.then = nullptr;
        EXPECT_EQ(heard_.status, 404);
        EXPECT_EQ(written, kSize);
        if (!Kivo::Testing::kIsSanitized) {  // which keeps what is freed
            EXPECT_LT(most - before, kAllowedKb);
        }
        const std::string whole = PartAt(0, kSize);
        const Base::Owner<char, g_free> sum(
            g_compute_checksum_for_string(G_CHECKSUM_SHA256, whole.data(), kSize));
        EXPECT_EQ(ThePeers().Received().back()["sha256"], sum.get());
    }
}

// The server takes what it will; until then nothing is asked of the application.
TEST_F(HttpBackendTest, UploadWaitsForASlowServer) {
    SetFault({{"read_rate", 100'000}}, "/up");
    OpenSession(Plain());
    HttpTransaction& upload = Open("/up", "x");
    upload.EnableReadyToWrite();
    constexpr std::size_t kSize = 64'000'000;
    ASSERT_EQ(upload.GetRequest().GetHeader().AddField("Content-Length",
                                                       Base::String(std::to_string(kSize))),
              result::kSuccess);
    std::size_t written = 1;
    heard_.then = [&](const std::string&, HttpSession&, HttpTransaction& transaction) {
        const auto size = static_cast<std::size_t>(heard_.recommended);
        written += size;
        EXPECT_EQ(transaction.GetRequest().WriteBody(*Testing::BufferOf(PartAt(0, size))),
                  result::kSuccess);
    };
    ASSERT_EQ(upload.Submit(), result::kSuccess);
    std::size_t before = 0;
    RunUntil([&, end = std::chrono::steady_clock::now() + std::chrono::seconds(2)] {
        if (std::chrono::steady_clock::now() < end - std::chrono::seconds(1)) before = written;
        loop_.StartTimer(Base::EventClass::kSystem, std::chrono::milliseconds(50), [] {});
        return std::chrono::steady_clock::now() > end;
    });
    EXPECT_GT(written, 1U);
    EXPECT_LT(written, kSize / 2);  // what the kernels hold, and no more
    EXPECT_LT(written - before, 1'000'000U);
    session_ = nullptr;
    EXPECT_EQ(std::ranges::count(heard_.calls, "aborted"), 0);
}

TEST_F(HttpBackendTest, ManyRequestsLeaveNothingOpen) {
    for (int i = 0; i < 5; ++i) Get(Secure(), "/");
    const long before = Testing::UsageOf(getpid()).descriptors;
    for (int i = 0; i < 50; ++i) Get(i % 2 == 0 ? Secure() : Plain(), "/");
    session_ = nullptr;
    EXPECT_LE(Testing::UsageOf(getpid()).descriptors, before);
}

}  // namespace
}  // namespace Osp::Http
