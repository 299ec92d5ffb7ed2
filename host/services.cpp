#include "host/services.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <glib.h>
#include <iterator>
#include <optional>
#include <vector>

#include "osp/base/owner.h"
#include "osp/net/address.h"

namespace Host {

using Osp::Base::Owner;

namespace {

constexpr const char* kGroup = "Services";
constexpr const char* kPlainHttp = "plain_http";
constexpr std::array kNames = {"twitter_api", "twitpic_api", "twitpic_web", "facebook_graph",
                               "facebook_web"};
constexpr std::size_t kLargestServices = 64 * 1024;
constexpr std::size_t kLargestAuthorities = 1024 * 1024;

using KeyFile = Owner<GKeyFile, g_key_file_unref>;
using Words = Owner<gchar*, g_strfreev>;

/// Empty for a key that is not there.
std::string ValueOf(GKeyFile* file, const char* key) {
    const Owner<gchar, g_free> value(g_key_file_get_value(file, kGroup, key, nullptr));
    return value ? g_strchomp(value.get()) : "";
}

Outcome<> CheckNames(GKeyFile* file) {
    gsize count = 0;
    const Words groups(g_key_file_get_groups(file, &count));
    if (count != 1 || std::string(groups.get()[0]) != kGroup) {
        return Failure{std::string("it has to hold the group [") + kGroup + "] and no other"};
    }
    const Words keys(g_key_file_get_keys(file, kGroup, &count, nullptr));
    const std::vector<std::string> names(keys.get(), keys.get() + count);
    for (const std::string& key : names) {
        if (key == kPlainHttp || std::ranges::find(kNames, key) != kNames.end()) continue;
        return Failure{"it knows no '" + key + "'"};
    }
    return kDone;
}

Outcome<Services> Interpret(GKeyFile* file) {
    Services services;
    for (const char* name : kNames) {
        const std::string host = ValueOf(file, name);
        if (host.empty()) return Failure{std::string("the host of ") + name + " is missing"};
        if (!Osp::Net::ParseAddress(host)) {
            return Failure{std::string(name) + " is neither a host nor a host:port"};
        }
        services.hosts[name] = host;
    }
    const std::string plain = ValueOf(file, kPlainHttp);
    if (!plain.empty() && plain != "yes" && plain != "no") {
        return Failure{std::string(kPlainHttp) + " is neither yes nor no"};
    }
    services.isPlainHttpAllowed = plain == "yes";
    return services;
}

/// Fails when there is no such file or it is larger than `largest`.
Outcome<std::string> ReadFile(const std::string& path, std::size_t largest) {
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) return Failure{"it is a folder"};
    std::ifstream stream(path, std::ios::binary);
    std::string text(largest + 1, '\0');
    if (!stream.read(text.data(), static_cast<std::streamsize>(text.size())) && !stream.eof()) {
        return Failure{"it cannot be read"};
    }
    text.resize(static_cast<std::size_t>(stream.gcount()));
    if (text.size() > largest) return Failure{"it is too large"};
    return text;
}

Failure About(const char* what, const std::string& path, const Failure& why) {
    return {std::string(what) + " " + path + " cannot be used: " + why.message, kExitUsage};
}

constexpr std::string_view kCertificateBegins = "-----BEGIN CERTIFICATE-----";
constexpr std::string_view kCertificateEnds = "-----END CERTIFICATE-----";

/// The first part of `pem` between the marks of a certificate.
std::optional<std::string> FindCertificate(const std::string& pem) {
    const std::size_t begin = pem.find(kCertificateBegins);
    if (begin == std::string::npos) return std::nullopt;
    const std::size_t from = begin + kCertificateBegins.size();
    const std::size_t end = pem.find(kCertificateEnds, from);
    if (end == std::string::npos) return std::nullopt;
    return pem.substr(from, end - from);
}

/// Not whether it is a good one, only whether the file was mistaken for another.
bool LooksLikeCertificate(const std::string& base64) {
    constexpr guchar kSequence = 0x30;
    gsize size = 0;
    const Owner<guchar, g_free> bytes(g_base64_decode(base64.c_str(), &size));
    return size > 2 && bytes.get()[0] == kSequence;
}

}  // namespace

Outcome<Services> ParseServices(std::string_view text) {
    const KeyFile file(g_key_file_new());
    GError* error = nullptr;
    const bool isRead = text.find('\0') == std::string_view::npos &&
                        g_key_file_load_from_data(file.get(), text.data(), text.size(),
                                                  G_KEY_FILE_KEEP_TRANSLATIONS, &error);
    const Owner<GError, g_error_free> owned(error);
    if (!isRead) return Failure{error != nullptr ? error->message : "it is no text"};
    const Outcome<> names = CheckNames(file.get());
    if (!names) return names.Why();
    return Interpret(file.get());
}

Outcome<Services> ReadServices(const std::string& path) {
    constexpr const char* kWhat = "the services file";
    const Outcome<std::string> text = ReadFile(path, kLargestServices);
    if (!text) return About(kWhat, path, text.Why());
    Outcome<Services> services = ParseServices(*text);
    if (!services) return About(kWhat, path, services.Why());
    return services;
}

Outcome<> CheckAuthorities(const std::string& path) {
    constexpr const char* kWhat = "the file of authorities";
    const Outcome<std::string> text = ReadFile(path, kLargestAuthorities);
    if (!text) return About(kWhat, path, text.Why());
    const auto certificate = FindCertificate(*text);
    if (certificate && LooksLikeCertificate(*certificate)) return kDone;
    return About(kWhat, path, {"there is no certificate in it"});
}

}  // namespace Host
