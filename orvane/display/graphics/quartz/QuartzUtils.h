#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orvane::platform {
class NSData;
}

namespace orvane::display::graphics::quartz {

// String functions for loading images and reading their addresses.
class QuartzUtils {
public:
    // Decodes the part of a string from `offset` to its end. Characters outside the alphabet are
    // ignored. Returns nothing when the remaining characters are incomplete.
    static std::optional<platform::NSData> decodeBase64(const std::string& string,
                                                        std::size_t offset);

    // Returns the pieces between delimiters, including empty ones; one piece when there is no
    // delimiter.
    static std::vector<std::string> split(const std::string& string, char delimiter);
    // Returns the string without white space at both ends.
    static std::string trim(const std::string& string);
};

}  // namespace orvane::display::graphics::quartz
