#pragma once

#include <string>

namespace orvane::driver {

// Which objects a test looks for: those that have everything that is set here. Empty fields do not
// count.
struct Query {
    // What DisplayFactory calls the kind: "Rect", "Text", "Container", "InputText", ...
    std::string kind = {};
    // The accessibility label.
    std::string label = {};
    // The content of a text, or of an input text that is not secure.
    std::string text = {};
    // The kinds from the top-level object to the object itself, such as
    // "Container/Container[1]/Text". The number counts the siblings of the same kind from 0, and is
    // 0 if it is missing. "*" is any kind.
    std::string path = {};
};

}  // namespace orvane::driver
