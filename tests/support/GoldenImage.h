#pragma once

#include <gtest/gtest.h>

#include <string>

namespace orvane::platform {
class CGImage;
}

namespace orvane {

// Compares a picture with a PNG file of the repository. Color components may differ by the
// tolerance, which allows for rounding. On a mismatch, the picture and the difference are written
// to the working directory; the message names the files. When ORVANE_WRITE_GOLDEN is set in the
// environment, the PNG file is written instead: look at it before you commit it.
[[nodiscard]] ::testing::AssertionResult matchesGolden(const platform::CGImage& picture,
                                                       const std::string& goldenPath,
                                                       int tolerance = 2);

}  // namespace orvane
