#include <chrono>
#include <string>
#include <vector>

#include "tests/backends/http/http_fixture.h"

namespace Osp::Http {
namespace {

using std::chrono::milliseconds;

const std::string kShort = "HTTP/1.1 200 OK\r\nContent-Length: 5\r\nX: y\r\n\r\nhello";

class HttpFaultsTest : public HttpBackendTest {
  protected:
    HttpFaultsTest() { options_.idleLimit = milliseconds(1000); }

    /// "completed 200", or "aborted" and the reason.
    std::string Ended() const {
        if (heard_.calls.empty()) return "not at all";
        const bool isAnswer = heard_.calls.back() == "completed";
        return heard_.calls.back() + " " +
               std::to_string(isAnswer ? heard_.status : static_cast<int>(heard_.reason));
    }
    static std::string Aborted(result reason) {
        return "aborted " + std::to_string(static_cast<int>(reason));
    }
};

TEST_F(HttpFaultsTest, EveryOddAnswerHasItsEnd) {
    const std::string chunked = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
    const struct {
        Json fault;
        std::string ended;
        std::string body;
    } cases[] = {
        {{{"status", 500}, {"body", "sorry"}}, "completed 500", "sorry"},
        {{{"status", 302}, {"body", ""}, {"headers", {{"Location", "/elsewhere"}}}},
         "completed 302",
         ""},
        {{{"body", "0123456789"}, {"split", {1, 5}}}, "completed 200", "0123456789"},
        {{{"header_size", 30'000}, {"body", "x"}}, "completed 200", "x"},
        {{{"header_size", 70'000}, {"body", "x"}}, Aborted(result::kOutOfRange), ""},
        {{{"endless", "header"}}, Aborted(result::kOutOfRange), ""},
        {{{"endless", "line"}}, Aborted(result::kOutOfMemory), ""},
        {{{"endless", "body"}}, Aborted(result::kOutOfRange), ""},
        {{{"silent", true}}, Aborted(result::kTimedOut), ""},
        {{{"body", "hello"}, {"content_length", 100}, {"keep", true}},
         Aborted(result::kTimedOut),
         ""},
        {{{"body", "hello"}, {"content_length", 100}}, Aborted(result::kIo), ""},
        {{{"body", "hello"}, {"content_length", 2}}, "completed 200", "he"},
        {{{"body", "hello"}, {"content_length", 0}}, "completed 200", ""},
        {{{"body", "hello"}, {"keep", true}}, "completed 200", "hello"},
        {{{"close_request_after", 10}}, Aborted(result::kIo), ""},
        {{{"close_request_after", 10}, {"reset", true}}, Aborted(result::kIo), ""},
        {{{"raw", ""}}, Aborted(result::kIo), ""},
        {{{"raw", "\x16\x03 what?\r\n\r\n"}}, Aborted(result::kInvalidFormat), ""},
        {{{"raw", "HTTP/1.1 100 Continue\r\n\r\n" + kShort}}, "completed 200", "hello"},
        {{{"raw", "HTTP/1.0 200 OK\r\n\r\nto the end"}}, "completed 200", "to the end"},
        {{{"raw", "HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\nContent-Length: 2\r\n\r\nab"}},
         "completed 200",
         "ab"},
        {{{"raw", "HTTP/1.1 200 OK\r\nContent-Length: -1\r\n\r\nab"}},
         Aborted(result::kInvalidFormat),
         ""},
        {{{"raw", chunked + "2\r\nab\r\n0\r\n\r\n"}}, "completed 200", "ab"},
        {{{"raw", chunked + "2\r\nab\r\n"}}, Aborted(result::kIo), ""},
        {{{"raw", chunked + "zz\r\nab\r\n"}}, Aborted(result::kIo), ""},
        {{{"raw", chunked + "ffffffffffffffffff\r\nab\r\n"}}, Aborted(result::kIo), ""},
    };
    for (const auto& c : cases) {
        SetFault(c.fault);
        Get(Plain(), "/");
        EXPECT_EQ(Ended(), c.ended) << c.fault;
        EXPECT_EQ(heard_.body, c.body) << c.fault;
    }
    // No redirect was followed.
    for (const Json& request : ThePeers().Received()) EXPECT_EQ(request["target"], "/");
}

TEST_F(HttpFaultsTest, SlowIsNotIdle) {
    const auto start = std::chrono::steady_clock::now();
    SetFault({{"body", std::string(3000, 'x')}, {"rate", 1500}});
    Get(Plain(), "/");
    EXPECT_EQ(Ended(), "completed 200");
    // All of this fits into the kernel's buffer at once.
    SetFault({{"read_rate", 200'000}, {"body", "done"}});
    OpenSession(Plain());
    Run(Open("/", std::string(500'000, 'x')));
    EXPECT_EQ(Ended(), "completed 200");
    EXPECT_GT(std::chrono::steady_clock::now() - start, 3 * options_.idleLimit);
}

TEST_F(HttpFaultsTest, ListenerThatDoesNotWriteIsIdle) {
    for (const char* length : {"10", "4294967295", "18446744073709551615"}) {
        SetFault({{"read_rate", 1000}}, "/up");
        OpenSession(Plain());
        HttpTransaction& upload = Open("/up", "head");
        upload.EnableReadyToWrite();
        ASSERT_EQ(upload.GetRequest().GetHeader().AddField("Content-Length", length),
                  result::kSuccess);
        Run(upload);
        // Our server says at once what it thinks of such lengths.
        const bool isSane = std::string(length) == "10";
        EXPECT_EQ(Ended(), isSane ? Aborted(result::kTimedOut) : "completed 400") << length;
    }
}

TEST_F(HttpFaultsTest, ConnectionMayEndAtEveryByte) {
    for (const bool isReset : {false, true}) {
        for (const std::string& address : {Plain(), Secure()}) {
            for (std::size_t sent = 0; sent <= kShort.size(); ++sent) {
                SetFault({{"raw", kShort}, {"close_after", sent}, {"reset", isReset}});
                Get(address, "/");
                const bool isWhole = sent == kShort.size();
                EXPECT_EQ(heard_.calls.back(), isWhole ? "completed" : "aborted")
                    << address << sent << isReset;
                EXPECT_EQ(heard_.body, isWhole ? "hello" : "") << address << sent << isReset;
            }
        }
    }
}

// With and without reading on, as servers do.
TEST_F(HttpFaultsTest, AnswerBeforeTheEndOfTheBodyCounts) {
    const Json refusal{{"early", true}, {"status", 413}, {"body", "too large"}};
    const Json thanks{{"early", true}, {"status", 200}, {"body", "too large"}};
    for (const Json& kind : {refusal, thanks}) {
        for (const Json& way :
             {Json{}, Json{{"keep", true}}, Json{{"close_request_after", 300'000}},
              Json{{"close_request_after", 300'000}, {"keep", true}}, Json{{"read_rate", 10}}}) {
            Json fault = kind;
            fault.update(way.is_object() ? way : Json::object());
            SetFault(fault, "/up");
            OpenSession(Plain());
            HttpTransaction& upload = Open("/up", std::string(1000, 'x'));
            upload.EnableReadyToWrite();
            ASSERT_EQ(upload.GetRequest().GetHeader().AddField("Content-Length", "8000000"),
                      result::kSuccess);
            heard_.then = [this](const std::string& report, HttpSession&,
                                 HttpTransaction& transaction) {
                if (report != "write") return;
                const std::string part(static_cast<std::size_t>(heard_.recommended), 'x');
                EXPECT_EQ(transaction.GetRequest().WriteBody(*Testing::BufferOf(part)),
                          result::kSuccess);
            };
            Run(upload);
            heard_.then = nullptr;
            // A connection that is closed with something unread in it is reset, and that may reach
            // the sender before the answer does.
            const bool mayBeLost = fault.contains("close_request_after") && !fault.contains("keep");
            if (mayBeLost && Ended() == Aborted(result::kIo)) continue;
            EXPECT_EQ(Ended(), "completed " + std::to_string(kind["status"].get<int>())) << fault;
            EXPECT_EQ(heard_.body, "too large") << fault;
        }
    }
}

TEST_F(HttpFaultsTest, EverythingMayBeDeletedInEveryReport) {
    SetFault({{"status", 400}, {"body", "no"}}, "/up");
    SetFault({{"close_after", 3}}, "/broken");
    for (const std::string& address : {Plain(), Secure()}) {
        for (const char* report : {"write", "read", "completed", "aborted"}) {
            for (const bool isSession : {false, true}) {
                OpenSession(address);
                heard_.calls.clear();
                bool isDeleted = false;
                heard_.then = [&](const std::string& heard, HttpSession&,
                                  HttpTransaction& transaction) {
                    if (heard == report) {
                        isDeleted = true;
                        if (isSession) session_ = nullptr;
                        if (!isSession) delete &transaction;
                    } else if (heard == "write") {
                        const std::string part(static_cast<std::size_t>(heard_.recommended), 'x');
                        EXPECT_EQ(transaction.GetRequest().WriteBody(*Testing::BufferOf(part)),
                                  result::kSuccess);
                    }
                };
                const bool breaks = std::string(report) == "aborted";
                HttpTransaction& upload = Open(breaks ? "/broken" : "/up", "x");
                upload.EnableReadyToWrite();
                ASSERT_EQ(upload.GetRequest().GetHeader().AddField("Content-Length", "100000"),
                          result::kSuccess);
                ASSERT_EQ(upload.Submit(), result::kSuccess);
                RunUntil([&] { return isDeleted; });
                const std::size_t calls = heard_.calls.size();
                heard_.then = nullptr;
                bool isLater = false;
                loop_.StartTimer(Base::EventClass::kSystem, milliseconds(20),
                                 [&] { isLater = true; });
                RunUntil([&] { return isLater; });
                EXPECT_EQ(heard_.calls.size(), calls) << report;
            }
        }
    }
}

}  // namespace
}  // namespace Osp::Http
