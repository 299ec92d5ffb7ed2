// Text in UTF-16.
#pragma once

#include <string>
#include <string_view>

#include <osp/base/object.h>
#include <osp/base/result.h>

namespace Osp::Base {

/// A mutable sequence of UTF-16 code units. Positions and lengths count code units.
class String : public Object {
  public:
    String() = default;
    /// From UTF-8; bytes that are not valid UTF-8 become U+FFFD.
    String(const char* utf8);  // NOLINT(google-explicit-constructor): texts are literals everywhere
    explicit String(std::string_view utf8);
    explicit String(std::u16string text) : text_(std::move(text)) {}

    int GetLength() const { return static_cast<int>(text_.size()); }
    bool IsEmpty() const { return text_.empty(); }

    /// Returns this string.
    String& Append(const String& text);
    /// Appends the decimal form of `value`.
    String& Append(int value);
    /// Inserts before `position`; kOutOfRange, changing nothing, unless 0 <= position <= length.
    result Insert(const String& text, int position);

    /// Whether `prefix` stands at `startPosition`; false for a position outside the string.
    bool StartsWith(const String& prefix, int startPosition = 0) const;

    /// Where `text` stands first, from `startPosition` on; -1 when it stands nowhere there, and for
    /// a position outside the string.
    int IndexOf(const String& text, int startPosition = 0) const;
    /// Puts `replacement` everywhere in the place of `text`, which is not empty.
    void Replace(const String& text, const String& replacement);

    /// Stores `length` units from `startPosition` in `out`; kOutOfRange, leaving `out` alone, when
    /// the string is shorter than that.
    result SubString(int startPosition, int length, String& out) const;

    /// Half of a surrogate pair becomes U+FFFD.
    std::string ToUtf8() const;
    const std::u16string& Units() const { return text_; }

    friend bool operator==(const String& a, const String& b) { return a.text_ == b.text_; }
    friend auto operator<=>(const String& a, const String& b) { return a.text_ <=> b.text_; }

  private:
    std::u16string text_;
};

}  // namespace Osp::Base
