// An application that says that its main was called and then fails as the build tells it to:
// ORVANE_TEST_FAILURE is the statement.

#include <cstdio>
#include <stdexcept>
#include <string>

#include "orvane/runtime/Main.h"

namespace {

class Application {
public:
    void main() {
        std::fputs("main of " ORVANE_TEST_NAME "\n", stderr);
        ORVANE_TEST_FAILURE;
    }
};

}  // namespace

ORVANE_MAIN_CLASS(Application)
