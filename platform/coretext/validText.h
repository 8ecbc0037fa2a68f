#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>

namespace orvane::platform {

// Pango counts bytes with int. Longer texts are cut.
constexpr std::size_t kLongestText = std::numeric_limits<int>::max() / 4;

// Returns the text with the replacement character for each byte that is not valid UTF-8 and for
// each zero byte. Texts longer than kLongestText are cut.
std::string validText(std::string_view text);
// Whether the text is valid UTF-8 without zero bytes.
bool isValidText(std::string_view text);

}  // namespace orvane::platform
