#pragma once

#include <stdexcept>

namespace orvane::driver {

// Thrown when what a test asks for cannot be done or is not so; what() says why, for the person who
// reads the test's output. Test frameworks report it as a failure of the test.
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace orvane::driver
