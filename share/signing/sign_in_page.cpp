#include "share/signing/sign_in_page.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace Kivo {

using Osp::Base::String;

namespace {

constexpr const char* kRefusal = "Connection Denied";
constexpr const char* kPinMark = "<div id=\"oauth_pin\">";
constexpr int kPinMarkLength = 20;
constexpr int kPinLength = 7;
constexpr const char* kDenialMark = "ACCESS_DENIED";
constexpr int kTokenNameLength = 13;  // of "access_token="

bool Contains(const String& text, const char* part) {
    return text.IndexOf(part) >= 0;
}

// The place where the token starts is compared with its length: a token is taken only when it is
// the larger. And a name at the very beginning is none. Both are deliberate.
void CutFragment(const String& url, String& token) {
    const int name = url.IndexOf("access_token");
    if (name <= 0) return;
    const int start = name + kTokenNameLength;
    const int length = url.IndexOf("expires_in", name) - 1 - start;
    if (start < length) (void)url.SubString(start, length, token);
}

/// In lower case, and without the port that https has anyhow.
std::string Canonical(std::string_view host) {
    constexpr std::string_view kPort = ":443";
    if (host.ends_with(kPort)) host.remove_suffix(kPort.size());
    std::string canonical(host);
    std::ranges::transform(canonical, canonical.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return canonical;
}

}  // namespace

SignInAnswer ReadPin(const String& chunk, String& pin) {
    if (chunk.IndexOf(kRefusal) >= 1) return SignInAnswer::kDenied;
    const int mark = chunk.IndexOf(kPinMark);
    const bool isThere =
        mark >= 1 && Osp::Succeeded(chunk.SubString(mark + kPinMarkLength, kPinLength, pin));
    return isThere ? SignInAnswer::kGiven : SignInAnswer::kNone;
}

SignInAnswer ReadFacebookToken(const String& url, String& token) {
    if (Contains(url, "login.php")) return SignInAnswer::kNone;  // still signing in
    if (Contains(url, "error_reason")) token.Append(kDenialMark);
    if (token.IsEmpty()) CutFragment(url, token);
    if (token.IsEmpty()) return SignInAnswer::kNone;
    if (token != kDenialMark) return SignInAnswer::kGiven;
    token = {};
    return SignInAnswer::kDenied;
}

bool IsSecurePageOf(const String& url, const String& host) {
    constexpr std::string_view kScheme = "https://";
    const std::string text = url.ToUtf8();
    if (!text.starts_with(kScheme) || host.IsEmpty()) return false;
    const std::string_view rest = std::string_view(text).substr(kScheme.size());
    return Canonical(rest.substr(0, rest.find_first_of("/?#"))) == Canonical(host.ToUtf8());
}

}  // namespace Kivo
