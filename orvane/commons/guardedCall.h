#pragma once

#include <exception>

#include "orvane/commons/reportMisuse.h"

namespace orvane::commons {

// Calls a function of the application from a loop of the platform, which has no use for an
// exception: one ends here, with a line in the log. `where` says whose exception it was.
template <typename Call>
void guardedCall(const char* where, const Call& call) {
    try {
        call();
    } catch (const std::exception& exception) {
        reportMisuse(where, exception.what());
    } catch (...) {
        reportMisuse(where, "not a std::exception");
    }
}

}  // namespace orvane::commons
