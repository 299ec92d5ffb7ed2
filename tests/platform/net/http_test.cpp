#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

#include "tests/support/http_recorder.h"
#include "tests/support/scripted_transport.h"
#include "tests/support/test_loop.h"

namespace Osp::Net::Http {
namespace {

using Base::String;
using Calls = std::vector<std::string>;
using Testing::BufferOf;

class HttpTest : public testing::Test {
  protected:
    explicit HttpTest(const Trust& trust = {}) : transport_(trust) {}

    HttpTransaction& Open(const String& host = "https://api.test",
                          const String& uri = "https://api.test/path?q=1") {
        session_ = std::make_unique<HttpSession>();
        EXPECT_EQ(session_->Construct(HttpSessionMode::kNormal, nullptr, host, nullptr,
                                      HttpCookieFlag::kEnabled),
                  result::kSuccess);
        HttpTransaction& transaction = *session_->OpenTransactionN();
        transaction.SetListener(&heard_);
        EXPECT_EQ(transaction.GetRequest().SetUri(uri), result::kSuccess);
        return transaction;
    }
    HttpTransaction& OpenPost() {
        HttpTransaction& transaction = Open();
        transaction.GetRequest().SetMethod(HttpMethod::kPost);
        return transaction;
    }
    HttpTransaction& OpenUpload(const String& length) {
        HttpTransaction& transaction = OpenPost();
        transaction.EnableReadyToWrite();
        EXPECT_EQ(transaction.GetRequest().GetHeader().AddField("Content-Length", length),
                  result::kSuccess);
        return transaction;
    }
    static result Write(HttpTransaction& transaction, const std::string& text) {
        return transaction.GetRequest().WriteBody(*BufferOf(text));
    }
    const Calls& Settled() {
        loop_.Settle();
        return heard_.calls;
    }

    Testing::TestLoop loop_;
    Testing::ScriptedTransport transport_;
    Testing::HttpRecorder heard_;
    std::unique_ptr<HttpSession> session_;
};

TEST_F(HttpTest, SessionIsOneServersAndOfTheOneKind) {
    const String proxy("http://proxy.test");
    const auto construct = [](HttpSession& session, const String& host, const String* by = nullptr,
                              HttpSessionMode mode = HttpSessionMode::kNormal) {
        return session.Construct(mode, by, host, nullptr, HttpCookieFlag::kEnabled);
    };
    HttpSession session;
    EXPECT_EQ(session.OpenTransactionN(), nullptr);
    for (const char* wrong : {"", "api.test", "ftp://api.test", "https://", "https://a@b",
                              "https://a/b", "https://a//", "HTTPS://a", "http://a:0", "//a"}) {
        EXPECT_EQ(construct(session, wrong), result::kInvalidArgument) << wrong;
    }
    EXPECT_EQ(construct(session, "http://a", &proxy), result::kUnsupported);
    EXPECT_EQ(construct(session, "http://a", nullptr, HttpSessionMode::kPipelining),
              result::kUnsupported);
    EXPECT_EQ(construct(session, "http://a:81/"), result::kSuccess);
    EXPECT_EQ(construct(session, "http://a:81"), result::kInvalidState);
    HttpRequest& request = session.OpenTransactionN()->GetRequest();
    for (const char* wrong : {"", "/x", "http://a:81", "http://a:8/x", "http://a:810/x",
                              "https://a:81/x", "http://a:81@b/x", "http://a:81/x y",
                              "http://a:81/#x", "http://a:81/\x01", "http://a:81/\xc3\xa4"}) {
        EXPECT_EQ(request.SetUri(wrong), result::kInvalidArgument) << wrong;
    }
    EXPECT_EQ(request.SetUri("http://a:81/x?q=%23K&r=[]"), result::kSuccess);
    EXPECT_EQ(request.GetUri(), "http://a:81/x?q=%23K&r=[]");
}

TEST_F(HttpTest, FieldsAreTokensAndTexts) {
    HttpHeader header;
    for (const char* wrong : {"", "a b", "a:", "a\r", "\xc3\xa4", "a(b"}) {
        EXPECT_EQ(header.AddField(wrong, "x"), result::kInvalidArgument) << wrong;
    }
    for (const char* wrong : {"a\r\nb: c", "a\nb", "a\x7f", "\x01"}) {
        EXPECT_EQ(header.AddField("X", wrong), result::kInvalidArgument) << wrong;
    }
    EXPECT_EQ(header.AddField("X-Common", "\xc3\xa4"), result::kSuccess);
    HttpSession session;
    ASSERT_EQ(session.Construct(HttpSessionMode::kNormal, nullptr, "https://a", &header,
                                HttpCookieFlag::kNever),
              result::kSuccess);
    HttpTransaction& transaction = *session.OpenTransactionN();
    ASSERT_EQ(transaction.Submit(), result::kInvalidState);
    ASSERT_EQ(transaction.GetRequest().SetUri("https://a/"), result::kSuccess);
    ASSERT_EQ(transaction.Submit(), result::kSuccess);
    EXPECT_EQ(transaction.Submit(), result::kInvalidState);
    const OutgoingRequest& sent = transport_.Last().request;
    EXPECT_EQ(sent.server.port, 443);
    EXPECT_EQ(sent.fields,
              (std::vector<std::pair<std::string, std::string>>{{"X-Common", "\xc3\xa4"}}));
}

TEST_F(HttpTest, UploadIsAskedForPartByPart) {
    HttpTransaction& transaction = OpenUpload("40010");
    ASSERT_EQ(Write(transaction, "head"), result::kSuccess);
    EXPECT_EQ(Write(transaction, ""), result::kInvalidArgument);
    ASSERT_EQ(transaction.Submit(), result::kSuccess);
    EXPECT_EQ(Write(transaction, "x"), result::kInvalidState);
    auto& exchange = transport_.Last();
    EXPECT_EQ(exchange.Take(3), 3U);
    EXPECT_EQ(Settled(), Calls{});
    EXPECT_EQ(exchange.Take(100), 1U);
    EXPECT_EQ(exchange.Take(100), 0U);
    EXPECT_EQ(heard_.calls, Calls{});
    EXPECT_EQ(Settled(), Calls{"write"});
    EXPECT_EQ(heard_.recommended, 16384);
    EXPECT_EQ(Write(transaction, ""), result::kInvalidArgument);
    EXPECT_EQ(Write(transaction, std::string(40007, 'x')), result::kOutOfRange);
    EXPECT_EQ(exchange.resumptions, 0);
    EXPECT_EQ(Write(transaction, std::string(40000, 'x')), result::kSuccess);
    EXPECT_EQ(exchange.resumptions, 1);
    EXPECT_EQ(Write(transaction, "x"), result::kInvalidState);
    EXPECT_EQ(exchange.Take(100000), 40000U);
    EXPECT_EQ(Settled(), (Calls{"write", "write"}));
    EXPECT_EQ(heard_.recommended, 6);
    EXPECT_EQ(Write(transaction, "foot\r\n"), result::kSuccess);
    EXPECT_EQ(exchange.Take(100), 6U);
    EXPECT_EQ(Settled(), (Calls{"write", "write"}));
    EXPECT_EQ(exchange.body, "head" + std::string(40000, 'x') + "foot\r\n");
}

TEST_F(HttpTest, ReportsOfWritingEndWithTheAnswer) {
    HttpTransaction& transaction = OpenUpload("100");
    ASSERT_EQ(Write(transaction, "head"), result::kSuccess);
    ASSERT_EQ(transaction.Submit(), result::kSuccess);
    transport_.Last().Take(100);
    transport_.Last().Answer(413);
    EXPECT_EQ(Settled(), Calls{"completed"});
    EXPECT_EQ(Write(transaction, "x"), result::kInvalidState);
    EXPECT_EQ(transport_.Last().client, nullptr);
}

TEST_F(HttpTest, LengthThatIsNoneOrNotThatOfTheBodyIsRefused) {
    const struct {
        const char* length;
        bool isUpload;
        bool goes;
    } cases[] = {
        {"", true, false},   {"-1", true, false},        {"+2", true, false},
        {"2 ", true, false}, {"0x2", true, false},       {"1", true, false},
        {"2", true, true},   {"4294967295", true, true}, {"99999999999999999999999", true, true},
        {"3", false, false}, {"1", false, false},        {"2", false, true}};
    for (const auto& c : cases) {
        HttpTransaction& transaction = c.isUpload ? OpenUpload(c.length) : OpenPost();
        if (!c.isUpload) {
            (void)transaction.GetRequest().GetHeader().AddField("content-length", c.length);
        }
        ASSERT_EQ(Write(transaction, "ab"), result::kSuccess);
        EXPECT_EQ(transaction.Submit(), c.goes ? result::kSuccess : result::kInvalidArgument)
            << c.length;
    }
    HttpTransaction& withoutLength = OpenPost();
    withoutLength.EnableReadyToWrite();
    EXPECT_EQ(withoutLength.Submit(), result::kInvalidArgument);
    HttpTransaction& withBody = Open();
    ASSERT_EQ(Write(withBody, "ab"), result::kSuccess);
    EXPECT_EQ(withBody.Submit(), result::kInvalidArgument);
    EXPECT_EQ(transport_.exchanges.size(), 4U);
}

TEST_F(HttpTest, EverythingMayBeDeletedInsideEveryReport) {
    const std::map<std::string, std::function<void()>> lives{
        {"write", [this] { transport_.Last().Take(100); }},
        {"read", [this] { transport_.Last().Answer(200, "body"); }},
        {"completed", [this] { transport_.Last().Answer(200); }},
        {"aborted", [this] { transport_.Last().Fail(result::kIo); }},
    };
    for (const auto& [report, bringAbout] : lives) {
        for (const bool isSession : {false, true}) {
            heard_.calls.clear();
            heard_.then = [&](const std::string&, HttpSession&, HttpTransaction& transaction) {
                if (!isSession) delete &transaction;
                if (isSession) session_ = nullptr;
            };
            HttpTransaction& transaction = OpenUpload("100");
            ASSERT_EQ(Write(transaction, "head"), result::kSuccess);
            ASSERT_EQ(transaction.Submit(), result::kSuccess);
            bringAbout();
            EXPECT_EQ(Settled(), Calls{report});
            EXPECT_EQ(transport_.Last().client, nullptr);
        }
    }
}

TEST_F(HttpTest, DeletingCancelsWithoutAReport) {
    HttpTransaction& transaction = Open();
    ASSERT_EQ(transaction.Submit(), result::kSuccess);
    transport_.Last().Answer(200, "body");
    delete &transaction;
    EXPECT_EQ(Settled(), Calls{});
    HttpTransaction& running = *session_->OpenTransactionN();
    running.SetListener(&heard_);
    ASSERT_EQ(running.GetRequest().SetUri("https://api.test/"), result::kSuccess);
    ASSERT_EQ(running.Submit(), result::kSuccess);
    session_ = nullptr;
    EXPECT_EQ(transport_.Last().client, nullptr);
    EXPECT_EQ(Settled(), Calls{});
}

TEST_F(HttpTest, BodiesInTheClearStayOnThisMachine) {
    const struct {
        String host;
        bool isPost;
        bool goes;
    } cases[] = {
        {"http://api.test", true, false},         {"http://api.test", false, true},
        {"https://api.test", true, true},         {"http://localhost:8441", true, true},
        {"http://127.9.0.1", true, true},         {"http://[::1]:81", true, true},
        {"http://localhost.test", true, false},   {"http://127.0.0.1.test", true, false},
        {"http://[::ffff:1.2.3.4]", true, false},
    };
    for (const auto& c : cases) {
        heard_.calls.clear();
        heard_.reason = result::kSuccess;
        transport_.exchanges.clear();
        String uri(c.host);
        HttpTransaction& transaction = Open(c.host, uri.Append("/"));
        if (c.isPost) {
            transaction.GetRequest().SetMethod(HttpMethod::kPost);
            ASSERT_EQ(Write(transaction, "secret"), result::kSuccess);
        }
        EXPECT_EQ(transaction.Submit(), result::kSuccess);
        EXPECT_EQ(heard_.calls, Calls{});
        EXPECT_EQ(Settled(), c.goes ? Calls{} : Calls{"aborted"}) << c.host.ToUtf8();
        EXPECT_EQ(transport_.exchanges.size(), c.goes ? 1U : 0U);
        EXPECT_EQ(heard_.reason, c.goes ? result::kSuccess : result::kPermissionDenied);
        session_ = nullptr;
    }
}

class OpenHttpTest : public HttpTest {
  protected:
    OpenHttpTest() : HttpTest({.authorityFile = "", .isPlainHttpAllowed = true}) {}
};

TEST_F(OpenHttpTest, BodiesGoInTheClearWhereTheDeploymentSaysSo) {
    HttpTransaction& transaction = Open("http://api.test", "http://api.test/");
    transaction.GetRequest().SetMethod(HttpMethod::kPost);
    ASSERT_EQ(Write(transaction, "secret"), result::kSuccess);
    ASSERT_EQ(transaction.Submit(), result::kSuccess);
    EXPECT_EQ(Settled(), Calls{});
    EXPECT_EQ(transport_.Last().Take(100), 6U);
}

TEST_F(HttpTest, WithoutANetworkThereIsAnAbort) {
    Network none({}, [](const Trust&) { return nullptr; });
    const Network::Installed installed(none);
    ASSERT_EQ(Open().Submit(), result::kSuccess);
    EXPECT_EQ(heard_.calls, Calls{});
    EXPECT_EQ(Settled(), Calls{"aborted"});
    EXPECT_EQ(heard_.reason, result::kUnsupported);
}

}  // namespace
}  // namespace Osp::Net::Http
