// An application that prints a line when its main is called and then fails: ORVANE_TEST_FAILURE,
// which the build defines, is the failing statement.

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
