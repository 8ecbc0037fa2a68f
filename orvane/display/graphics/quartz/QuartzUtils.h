#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orvane::platform {
class NSData;
}

namespace orvane::display::graphics::quartz {

// What loading pictures and reading their addresses needs of strings.
class QuartzUtils {
public:
    // The part of the string from `offset` to its end, decoded. Characters that are not of the
    // alphabet are ignored; nothing when what is left is not whole.
    static std::optional<platform::NSData> decodeBase64(const std::string& string,
                                                        std::size_t offset);

    // The pieces between the delimiters, empty ones included; one piece where there is none.
    static std::vector<std::string> split(const std::string& string, char delimiter);
    // Without white space at both ends.
    static std::string trim(const std::string& string);
};

}  // namespace orvane::display::graphics::quartz
