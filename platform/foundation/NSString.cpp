#include "platform/foundation/NSString.h"

#include <glib.h>

#include <algorithm>
#include <utility>

namespace orvane::platform {

namespace {

bool isASCII(std::string_view bytes) {
    return std::ranges::all_of(bytes,
                               [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

std::string utf8FromLatin1(std::string_view bytes) {
    if (isASCII(bytes)) {
        return std::string(bytes);
    }
    std::string utf8;
    utf8.reserve(bytes.size());
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        if (code < 0x80) {
            utf8 += byte;
        } else {
            utf8 += static_cast<char>(0xC0 | (code >> 6));
            utf8 += static_cast<char>(0x80 | (code & 0x3F));
        }
    }
    return utf8;
}

// The characters U+0080 to U+00FF have the lead bytes C2 and C3; other lead bytes are not Latin-1.
std::optional<std::string> latin1FromUtf8(std::string_view utf8) {
    if (isASCII(utf8)) {
        return std::string(utf8);
    }
    std::string bytes;
    bytes.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        if (lead < 0x80) {
            bytes += utf8[i];
        } else if (lead == 0xC2 || lead == 0xC3) {
            const auto next = static_cast<unsigned char>(utf8[++i]);
            bytes += static_cast<char>(((lead & 0x03) << 6) | (next & 0x3F));
        } else {
            return std::nullopt;
        }
    }
    return bytes;
}

}  // namespace

NSString::NSString(std::string utf8) : utf8_(std::move(utf8)) {}

std::optional<NSString> NSString::initWithUTF8String(const char* text) {
    return initWithBytes(text, NSUTF8StringEncoding);
}

std::optional<NSString> NSString::initWithBytes(std::string_view bytes, NSStringEncoding encoding) {
    if (encoding == NSISOLatin1StringEncoding) {
        return NSString(utf8FromLatin1(bytes));
    }
    if (g_utf8_validate_len(bytes.data(), bytes.size(), nullptr) == FALSE) {
        return std::nullopt;
    }
    return NSString(std::string(bytes));
}

NSString NSString::stringByAppendingString(const NSString& text) const {
    return NSString(utf8_ + text.utf8_);
}

std::optional<std::string> NSString::cStringUsingEncoding(NSStringEncoding encoding) const {
    if (encoding == NSUTF8StringEncoding) {
        return utf8_;
    }
    return latin1FromUtf8(utf8_);
}

}  // namespace orvane::platform
