#include "orvane/display/graphics/quartz/QuartzUtils.h"

#include <string_view>

#include "platform/foundation/NSData.h"

namespace orvane::display::graphics::quartz {

std::optional<platform::NSData> QuartzUtils::decodeBase64(const std::string& string,
                                                          std::size_t offset) {
    if (offset > string.size()) {
        return std::nullopt;
    }
    return platform::NSData::initWithBase64EncodedData(std::string_view(string).substr(offset));
}

std::vector<std::string> QuartzUtils::split(const std::string& string, char delimiter) {
    std::vector<std::string> pieces;
    std::size_t begin = 0;
    for (std::size_t end = string.find(delimiter); end != string.npos;
         end = string.find(delimiter, begin)) {
        pieces.push_back(string.substr(begin, end - begin));
        begin = end + 1;
    }
    pieces.push_back(string.substr(begin));
    return pieces;
}

std::string QuartzUtils::trim(const std::string& string) {
    static constexpr std::string_view whiteSpace = " \t\r\n\v\f";
    const std::size_t first = string.find_first_not_of(whiteSpace);
    if (first == string.npos) {
        return {};
    }
    return string.substr(first, string.find_last_not_of(whiteSpace) - first + 1);
}

}  // namespace orvane::display::graphics::quartz
