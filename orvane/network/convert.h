#pragma once

#include <string>

#include "platform/foundation/NSString.h"

namespace orvane::network {

// Converts text of an application for the platform. The text is read as UTF-8 up to its first zero
// byte, or as Latin-1 if it is not valid UTF-8.
[[nodiscard]] platform::NSString convert(const std::string& text);

// Converts text of the platform for an application, as Latin-1. The platform reads the bytes of
// header fields as Latin-1, too, so applications receive exactly the bytes that a server sent.
// Returns an empty text if a character is not part of Latin-1.
[[nodiscard]] std::string convert(const platform::NSString& text);

}  // namespace orvane::network
