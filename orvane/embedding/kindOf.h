#pragma once

#include <string>
#include <string_view>

#include "orvane/display/tree/DisplayObject.h"

namespace orvane::embedding {

// Returns the name of an object's kind as DisplayFactory has it: "Rect", "Text", "InputText".
inline std::string kindOf(const display::DisplayObject& object) {
    std::string kind = object.getDescription();
    for (const std::string_view prefix : {"Quartz", "UI"}) {
        if (kind.starts_with(prefix)) {
            kind.erase(0, prefix.size());
        }
    }
    return kind;
}

}  // namespace orvane::embedding
