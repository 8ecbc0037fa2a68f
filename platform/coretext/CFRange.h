#pragma once

#include <cstddef>

namespace orvane::platform {

// A part of a string. Strings are UTF-8, and ranges count bytes.
struct CFRange {
    std::size_t location = 0;
    std::size_t length = 0;

    std::size_t end() const { return location + length; }
    friend constexpr bool operator==(const CFRange&, const CFRange&) = default;
};

}  // namespace orvane::platform
