#include "platform/gtk/web/toScriptError.h"

#include <charconv>
#include <string_view>

namespace orvane::platform {

namespace {

// Removes a colon and a number from the end of a text and returns the number; 0 if there is none.
int takeNumber(std::string_view& text) {
    const std::size_t colon = text.rfind(':');
    if (colon == std::string_view::npos) {
        return 0;
    }
    const std::string_view digits = text.substr(colon + 1);
    int number = 0;
    const auto [end, fault] = std::from_chars(digits.begin(), digits.end(), number);
    if (fault != std::errc() || end != digits.end() || number <= 0) {
        return 0;
    }
    text.remove_suffix(digits.size() + 1);
    return number;
}

}  // namespace

NSWebScriptResult toScriptError(const std::string& message) {
    NSWebScriptResult result;
    result.error = message;
    // An address contains no spaces.
    const std::size_t end = message.find(' ');
    if (end == std::string::npos || end == 0 || message[end - 1] != ':') {
        return result;
    }
    std::string_view place = std::string_view(message).substr(0, end - 1);
    const int last = takeNumber(place);
    const int first = last > 0 ? takeNumber(place) : 0;
    if (last > 0) {
        result.line = first > 0 ? first : last;
        result.column = first > 0 ? last : 0;
        result.error = message.substr(end + 1);
    }
    return result;
}

}  // namespace orvane::platform
