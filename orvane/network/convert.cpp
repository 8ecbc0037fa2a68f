#include "orvane/network/convert.h"

namespace orvane::network {

platform::NSString convert(const std::string& text) {
    if (auto string = platform::NSString::initWithUTF8String(text.c_str())) {
        return *string;
    }
    return platform::NSString::initWithBytes(text, platform::NSISOLatin1StringEncoding)
        .value_or(platform::NSString());
}

std::string convert(const platform::NSString& text) {
    return text.cStringUsingEncoding(platform::NSISOLatin1StringEncoding).value_or(std::string());
}

}  // namespace orvane::network
