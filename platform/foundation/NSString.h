#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

#include "orvane/commons/Export.h"

namespace orvane::platform {

// The encodings that cross the interface, by the interface's numbers.
enum NSStringEncoding : unsigned long {
    NSUTF8StringEncoding = 4,
    NSISOLatin1StringEncoding = 5,
};

// Text that is known to be valid Unicode; held as UTF-8.
class ORVANE_EXPORT NSString {
public:
    NSString() = default;

    // Nothing when the bytes up to the first zero are not valid UTF-8.
    static std::optional<NSString> initWithUTF8String(const char* text);
    // Nothing when the bytes are not text in that encoding. Every byte is a Latin-1 character.
    static std::optional<NSString> initWithBytes(std::string_view bytes, NSStringEncoding encoding);

    [[nodiscard]] const std::string& UTF8String() const { return utf8_; }
    [[nodiscard]] NSString stringByAppendingString(const NSString& text) const;
    // Nothing when a character has no place in the encoding.
    [[nodiscard]] std::optional<std::string> cStringUsingEncoding(NSStringEncoding encoding) const;

    auto operator<=>(const NSString&) const = default;

private:
    explicit NSString(std::string utf8);

    std::string utf8_;
};

}  // namespace orvane::platform
