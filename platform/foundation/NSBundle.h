#pragma once

#include <optional>
#include <string>

namespace orvane::platform {

// A folder of resources that somebody installed for others to find by its identifier: the folder
// orvane/bundles/<identifier> in the user's data folder ($XDG_DATA_HOME) or, failing that, in one
// of the system's ($XDG_DATA_DIRS), with the resources in its subfolder Resources.
class NSBundle {
public:
    // Nothing when no such folder is installed. An identifier is made of ASCII letters, digits,
    // '.', '-' and '_' ("org.example.charts"); no other text names a bundle, so none leads out of
    // the folder of bundles.
    static std::optional<NSBundle> bundleWithIdentifier(const std::string& identifier);

    [[nodiscard]] std::string resourcePath() const;

private:
    explicit NSBundle(std::string path);

    std::string path_;
};

}  // namespace orvane::platform
