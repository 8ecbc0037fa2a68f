#pragma once

#include <string>

namespace orvane::platform {
class CGImage;
}

namespace orvane::driver {

// Compares a picture with a PNG file. Color components may differ by the tolerance, which allows
// for rounding. Returns what is wrong, as one line; empty if nothing is. If they differ, writes
// <name>-actual.png and <name>-difference.png to the working directory: in the second one, a pixel
// is the more opaque the more it differs. When ORVANE_WRITE_GOLDEN is set in the environment,
// writes the picture to the file instead: look at it before you commit it.
std::string comparePictures(const platform::CGImage& picture, const std::string& path,
                            int tolerance);

}  // namespace orvane::driver
