#pragma once

#include <string>

namespace orvane::display {

// Makes a font file known to the process. A file that cannot be read is passed over in silence; one
// that is no font, or that the platform refuses, leaves a line for the developer.
void registerFont(const std::string& path);

}  // namespace orvane::display
