// Any text as what servers say while somebody signs in: whatever is taken stands in it.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "share/signing/sign_in_page.h"
#include "share/signing/token_answer.h"

namespace {

using Osp::Base::String;

constexpr const char* kUntouched = "\x01";

void Check(bool holds) {
    if (!holds) std::abort();
}

void CheckTaken(const String& text, const String& taken) {
    Check(taken == kUntouched || text.IndexOf(taken) >= 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t count) {
    const String text(std::string_view(reinterpret_cast<const char*>(data), count));
    for (const auto cut : {Kivo::CutRequestToken, Kivo::CutAccessToken}) {
        String token(kUntouched);
        String secret(kUntouched);
        cut(text, token, secret);
        CheckTaken(text, token);
        CheckTaken(text, secret);
    }
    String pin;
    Check(Kivo::ReadPin(text, pin) != Kivo::SignInAnswer::kGiven || pin.GetLength() == 7);
    Check(text.IndexOf(pin) >= 0);
    String token;
    const bool isGiven = Kivo::ReadFacebookToken(text, token) == Kivo::SignInAnswer::kGiven;
    Check(isGiven != token.IsEmpty() && text.IndexOf(token) >= 0);
    Check(!Kivo::IsSecurePageOf(text, "host") || text.StartsWith("https://"));
    return 0;
}
