// A result is `"link":"...","thumb":"..."` with anything around, up to a "}". Only the order of
// these is relied upon. Every search begins behind the last, and one that finds nothing ends the
// scan, so that no answer whatever makes it go round in circles.
#include "share/wall/wall_scan.h"

#include <algorithm>
#include <string_view>

namespace Kivo {

using Osp::Base::String;

namespace {

constexpr int kShortestRest = 11;        // characters; less holds no result
constexpr int kLinkNameLength = 7;       // of link":"
constexpr int kThumbnailNameLength = 8;  // of thumb":"
constexpr std::size_t kLongestAddress = 2048;

bool CanStandInPage(char16_t c) {
    constexpr std::u16string_view kDangerous = u"'\"<>\\`";
    const bool isControl = c < u' ' || (c >= 0x7F && c < 0xA0);
    return !isControl && kDangerous.find(c) == std::u16string_view::npos;
}

bool IsUsable(const String& address) {
    const std::u16string_view text = address.Units();
    const bool isOfWeb = text.starts_with(u"http://") || text.starts_with(u"https://");
    return isOfWeb && text.size() <= kLongestAddress && std::ranges::all_of(text, CanStandInPage);
}

class Scan {
  public:
    explicit Scan(const String& text) : text_(text) {}

    bool IsNearEnd() const { return text_.GetLength() - from_ < kShortestRest; }

    /// Moves behind the next `mark`; false when there is none.
    bool Pass(const char* mark, int length) {
        const int at = text_.IndexOf(mark, from_);
        from_ = at + length;
        return at >= 0;
    }
    /// The value that begins here and ends before a quotation mark and a comma, behind which it
    /// moves. One that is too short to have its mark is empty.
    bool TakeValue(String& value) {
        const int comma = text_.IndexOf(",", from_);
        if (comma < 0) return false;
        (void)text_.SubString(from_, comma - 1 - from_, value);
        from_ = comma + 1;
        return true;
    }

  private:
    const String& text_;
    int from_ = 0;
};

}  // namespace

std::vector<WallItem> ScanWall(String answer) {
    std::vector<WallItem> items;
    answer.Append("]");
    answer.Replace("\\", "");
    Scan scan(answer);
    while (!scan.IsNearEnd()) {
        WallItem item;
        if (!scan.Pass("link", kLinkNameLength) || !scan.TakeValue(item.link)) break;
        if (!scan.Pass("thumb", kThumbnailNameLength) || !scan.TakeValue(item.thumbnail)) break;
        // Both or none, so that link and picture belong together.
        if (IsUsable(item.link) && IsUsable(item.thumbnail)) items.push_back(std::move(item));
        if (!scan.Pass("}", 2)) break;  // and the comma behind it
    }
    return items;
}

}  // namespace Kivo
