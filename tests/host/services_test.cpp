#include "host/services.h"

#include <gtest/gtest.h>
#include <string>

#include "osp/net/address.h"
#include "tests/support/programs/program.h"
#include "tests/support/temporary_folder.h"

namespace Host {
namespace {

using Osp::Testing::TemporaryFolder;
using Osp::Testing::WriteText;

const std::string kGood =
    "[Services]\ntwitter_api=api.example.org\ntwitpic_api = 127.0.0.1:80 \n"
    "twitpic_web=[::1]:8080\nfacebook_graph=localhost:65535\nfacebook_web=a-b.c\n";

std::string With(const std::string& from, const std::string& to) {
    std::string text = kGood;
    return text.replace(text.find(from), from.size(), to);
}

TEST(ServicesFile, NamesAHostForEachService) {
    const Outcome<Services> services = ParseServices(kGood);
    ASSERT_TRUE(services) << services.Why().message;
    EXPECT_EQ((*services).hosts.at("twitter_api"), "api.example.org");
    EXPECT_EQ((*services).hosts.at("twitpic_api"), "127.0.0.1:80");
    EXPECT_EQ((*services).hosts.at("twitpic_web"), "[::1]:8080");
    EXPECT_EQ((*services).hosts.size(), 5U);
    EXPECT_FALSE((*services).isPlainHttpAllowed);
    EXPECT_TRUE((*ParseServices(kGood + "plain_http=yes\n")).isPlainHttpAllowed);
    EXPECT_FALSE((*ParseServices(kGood + "plain_http=no\n")).isPlainHttpAllowed);
}

TEST(ServicesFile, ThatIsWrongIsRefusedWithTheReason) {
    const struct {
        std::string text;
        const char* said;
    } cases[] = {
        {"", "[Services]"},
        {"twitter_api=a\n", "group"},
        {"[Other]\n" + kGood, "[Services]"},
        {kGood + "[Other]\n", "no other"},
        {kGood + "twitter_ap=x\n", "'twitter_ap'"},
        {kGood + "twitter_api[de]=x\n", "'twitter_api[de]'"},
        {With("a-b.c", ""), "facebook_web is missing"},
        {With("facebook_web=a-b.c\n", ""), "facebook_web is missing"},
        {With("a-b.c", "a/b"), "facebook_web is neither"},
        {kGood + "plain_http=true\n", "plain_http is neither"},
        {kGood + std::string(1, '\0'), "no text"},
        {"\xff\xfe[", "group"},
    };
    for (const auto& c : cases) {
        const Outcome<Services> services = ParseServices(c.text);
        ASSERT_FALSE(services) << c.text;
        EXPECT_NE(services.Why().message.find(c.said), std::string::npos) << services.Why().message;
    }
}

TEST(Address, IsAHostAndPerhapsAPortAndNothingElse) {
    const std::string longest(63, 'a');
    for (const std::string& good : {std::string("a"), std::string("a.b-c.1"), longest + ".b",
                                    std::string("[fe80::1]"), std::string("x:1")}) {
        EXPECT_TRUE(Osp::Net::ParseAddress(good)) << good;
    }
    EXPECT_EQ(Osp::Net::ParseAddress("[::1]:8443")->host, "[::1]");
    EXPECT_EQ(Osp::Net::ParseAddress("[::1]:8443")->port, 8443);
    for (const std::string& bad : {std::string(),
                                   std::string(":1"),
                                   std::string("a:"),
                                   std::string("a:0"),
                                   std::string("a:01"),
                                   std::string("a:65536"),
                                   std::string("a:99999999999"),
                                   std::string("a:+1"),
                                   std::string("a:1:2"),
                                   std::string("a b"),
                                   std::string(" a"),
                                   std::string("a/"),
                                   std::string("a@b"),
                                   std::string("a?"),
                                   std::string("a#"),
                                   std::string("a%41"),
                                   std::string("a_b"),
                                   std::string("-a"),
                                   std::string("a-"),
                                   std::string("a..b"),
                                   std::string("a."),
                                   std::string("::1"),
                                   std::string("[]"),
                                   std::string("[1.2.3.4]"),
                                   std::string("[::1"),
                                   std::string("[::1]x"),
                                   std::string("[fe80::1%lo]"),
                                   std::string("\xc3\xa4"),
                                   longest + "a",
                                   std::string(254, 'a'),
                                   std::string("a\r\nb")}) {
        EXPECT_FALSE(Osp::Net::ParseAddress(bad)) << bad;
    }
}

TEST(Address, IsThisMachineOnlyByItsOwnNames) {
    for (const char* here : {"localhost", "LocalHost", "127.0.0.1", "127.255.0.3", "[::1]"}) {
        EXPECT_TRUE(Osp::Net::IsLoopback(here)) << here;
    }
    for (const char* elsewhere : {"localhost.example.org", "127.example.org", "127.1", "128.0.0.1",
                                  "127.0.0.1.example.org", "[::2]", "0.0.0.0"}) {
        EXPECT_FALSE(Osp::Net::IsLoopback(elsewhere)) << elsewhere;
    }
}

// A base64 text that begins as every certificate does.
constexpr const char* kCertificate =
    "-----BEGIN CERTIFICATE-----\nMIIB\n-----END CERTIFICATE-----\n";

TEST(Program, EndsWhenAFileThatItIsGivenIsWrong) {
    const TemporaryFolder folder;
    WriteText(folder / "good.ini", kGood);
    WriteText(folder / "wrong.ini", kGood + "other=1\n");
    WriteText(folder / "large.ini", kGood + std::string(70000, '\n'));
    WriteText(folder / "good.pem", kCertificate);
    WriteText(folder / "wrong.pem", "-----BEGIN CERTIFICATE-----\nAAAA\n-----END CERTIFICATE-----");
    WriteText(folder / "cut.pem", "-----BEGIN CERTIFICATE-----\nMIIB\n");
    const struct {
        std::string option, file, said;
    } cases[] = {
        {"--services", "wrong.ini", "it knows no 'other'"},
        {"--services", "large.ini", "too large"},
        {"--services", "none.ini", "cannot be read"},
        {"--services", "", "is a folder"},
        {"--ca", "good.ini", "no certificate"},
        {"--ca", "wrong.pem", "no certificate"},
        {"--ca", "cut.pem", "no certificate"},
        {"--ca", "none.pem", "cannot be read"},
    };
    const std::string data = folder / "data";
    for (const auto& c : cases) {
        const auto ended =
            Kivo::Testing::RunScript({"--data", data, c.option, folder / c.file}, {"quit"});
        EXPECT_EQ(ended.exitCode, 2) << c.option << c.file;
        EXPECT_NE(ended.errors.find(c.said), std::string::npos) << ended.errors;
        EXPECT_NE(ended.errors.find(folder / c.file), std::string::npos) << ended.errors;
    }
    EXPECT_FALSE(std::filesystem::exists(data));
    const auto ended = Kivo::Testing::RunScript(
        {"--data", data, "--services", folder / "good.ini", "--ca", folder / "good.pem"}, {"quit"});
    EXPECT_EQ(ended.exitCode, 0) << ended.errors;
}

TEST(Program, LoadsNothingForServersUntilOneIsAsked) {
    const TemporaryFolder folder;
    Kivo::Testing::CameraProgram program(
        {"--headless", "--data", folder / "data", "--script", "-"});
    program.Send("print screen");
    EXPECT_NE(program.ReadLine(), "");
    const std::string maps =
        Osp::Testing::ReadText("/proc/" + std::to_string(program.Id()) + "/maps");
    EXPECT_NE(maps.find("libosp.so"), std::string::npos);
    for (const char* library : {"libkivo-http", "libcurl", "libssl", "libgnutls"}) {
        EXPECT_EQ(maps.find(library), std::string::npos) << library;
    }
}

}  // namespace
}  // namespace Host
