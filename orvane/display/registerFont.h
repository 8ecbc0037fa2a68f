#pragma once

#include <string>

namespace orvane::display {

// Makes the font in a file available to the texts of this process. A file that cannot be read is
// skipped silently; for a file that is not a font, or that the platform refuses, a line is logged.
void registerFont(const std::string& path);

}  // namespace orvane::display
