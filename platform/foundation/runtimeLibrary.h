#pragma once

#include <string>

#include "orvane/commons/Export.h"

namespace orvane::platform {

// Returns the path of a library that is installed with this one and opened when it is needed first.
// It is expected in the folder of the file that contains this function: liborvane.so, or a program
// that links the runtime statically.
[[nodiscard]] ORVANE_EXPORT std::string runtimeLibrary(const std::string& file);

}  // namespace orvane::platform
