#pragma once

#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>

namespace orvane::host {

// Parses the whole text as a finite decimal number, independently of the locale. Returns empty for
// any other text.
inline std::optional<double> parseNumber(std::string_view text) {
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || rest != end || !std::isfinite(number)) {
        return {};
    }
    return number;
}

}  // namespace orvane::host
