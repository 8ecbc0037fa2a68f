#pragma once

#include <optional>
#include <string>

namespace orvane::platform {

// An installed folder of resources, found by its identifier: orvane/bundles/<identifier> in the
// user's data folder ($XDG_DATA_HOME) or else in one of the system's ($XDG_DATA_DIRS). The
// resources are in its subfolder Resources.
class NSBundle {
public:
    // Returns nothing if no such bundle is installed. An identifier consists of ASCII letters,
    // digits, '.', '-' and '_' ("org.example.charts"). Any other text is refused, so that an
    // identifier cannot name a folder outside the folder of bundles.
    static std::optional<NSBundle> bundleWithIdentifier(const std::string& identifier);

    // The absolute path of the folder of resources.
    [[nodiscard]] std::string resourcePath() const;

private:
    explicit NSBundle(std::string path);

    std::string path_;
};

}  // namespace orvane::platform
