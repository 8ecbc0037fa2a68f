#pragma once

#include <string>

#include "platform/foundation/NSString.h"

namespace orvane::network {

// Text towards the platform: UTF-8 up to the first zero byte, or Latin-1 where it is not UTF-8.
[[nodiscard]] platform::NSString convert(const std::string& text);

// Text back from the platform, as Latin-1 on purpose: the platform reads header bytes as Latin-1,
// so an application gets the very bytes that a server sent. Empty when a character is beyond
// Latin-1.
[[nodiscard]] std::string convert(const platform::NSString& text);

}  // namespace orvane::network
