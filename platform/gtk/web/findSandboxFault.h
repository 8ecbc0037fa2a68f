#pragma once

#include <string>

namespace orvane::platform {

// Returns why WebKit could not start its processes in their sandbox, or nothing. WebKit itself
// would end the program with a signal. Runs a short child process at each call.
[[nodiscard]] std::string findSandboxFault();

}  // namespace orvane::platform
