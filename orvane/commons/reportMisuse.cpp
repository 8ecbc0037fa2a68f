#include "orvane/commons/reportMisuse.h"

#include <cstdio>

namespace orvane::commons {

void reportMisuse(const char* operation, const char* consequence) {
    std::fprintf(stderr, "%s: %s\n", operation, consequence);
}

}  // namespace orvane::commons
