#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

#include "orvane/commons/Export.h"

namespace orvane::platform {

// Text encodings. The numbers are those of the desktop's interface.
enum NSStringEncoding : unsigned long {
    NSUTF8StringEncoding = 4,
    NSISOLatin1StringEncoding = 5,
};

// Immutable text. It is always valid Unicode, and is stored as UTF-8.
class ORVANE_EXPORT NSString {
public:
    NSString() = default;

    // Returns nothing if the bytes up to the first zero are not valid UTF-8.
    static std::optional<NSString> initWithUTF8String(const char* text);
    // Returns nothing if the bytes are not valid text in the encoding. In Latin-1 all bytes are.
    static std::optional<NSString> initWithBytes(std::string_view bytes, NSStringEncoding encoding);

    [[nodiscard]] const std::string& UTF8String() const { return utf8_; }
    [[nodiscard]] NSString stringByAppendingString(const NSString& text) const;
    // Returns nothing if the encoding lacks one of the characters.
    [[nodiscard]] std::optional<std::string> cStringUsingEncoding(NSStringEncoding encoding) const;

    auto operator<=>(const NSString&) const = default;

private:
    explicit NSString(std::string utf8);

    std::string utf8_;
};

}  // namespace orvane::platform
