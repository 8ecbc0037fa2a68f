#pragma once

#include <functional>
#include <string>
#include <vector>

#include "orvane/inspector/Tree.h"

namespace orvane::inspector {

// One value of an object or a layer.
struct Property {
    enum class Kind { Text, Color, Toggle };

    std::string name;
    // A color is #RRGGBB or #RRGGBBAA, a toggle is "yes" or "no".
    std::string value;
    // Changes the value. Returns false, and changes nothing, if the text is no value of this kind.
    // Empty for a value that cannot be changed.
    std::function<bool(const std::string&)> set = {};
    Kind kind = Kind::Text;
    // Whether a press copies the value.
    bool isCopied = false;
};

// Values that belong together.
struct Section {
    std::string title;
    std::vector<Property> properties;
};

// Returns the properties of an object or a layer; nothing if it no longer exists. The functions
// that change values hold it weakly.
std::vector<Section> propertiesOf(const Node& node);

}  // namespace orvane::inspector
