#include "tests/support/GoldenImage.h"

#include "orvane/driver/comparePictures.h"

namespace orvane {

::testing::AssertionResult matchesGolden(const platform::CGImage& picture,
                                         const std::string& goldenPath, int tolerance) {
    const std::string fault = driver::comparePictures(picture, goldenPath, tolerance);
    return fault.empty() ? ::testing::AssertionSuccess() : ::testing::AssertionFailure() << fault;
}

}  // namespace orvane
