#pragma once

#include <string>

#include "platform/web/NSWebEngine.h"

namespace orvane::platform {

// Takes a message of WebKit about a script apart: "address:line:column: message", where the column,
// or the whole beginning, may be absent.
[[nodiscard]] NSWebScriptResult toScriptError(const std::string& message);

}  // namespace orvane::platform
