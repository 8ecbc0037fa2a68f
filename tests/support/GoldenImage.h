#pragma once

#include <gtest/gtest.h>

#include <string>

namespace orvane::platform {
class CGImage;
}

namespace orvane {

// Compares a picture with a PNG of the repository, pixel by pixel; components may differ by the
// tolerance, as much as rounding does. On a mismatch the picture and the difference are written
// into the working folder, and the message says where. With ORVANE_WRITE_GOLDEN set in the
// environment the file is written instead: look at it before it is committed.
[[nodiscard]] testing::AssertionResult matchesGolden(const platform::CGImage& picture,
                                                     const std::string& goldenPath,
                                                     int tolerance = 2);

}  // namespace orvane
