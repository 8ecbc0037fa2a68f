#pragma once

#include <string>

#include "orvane/display/graphics/InputText.h"
#include "orvane/display/graphics/Text.h"

namespace orvane::embedding {

// Returns the text that an object shows: the content of a text or of an input text, but never that
// of a secure one; empty for any other object. Main thread only.
inline std::string textOf(const display::DisplayObject& object) {
    if (const auto* const text = dynamic_cast<const display::graphics::Text*>(&object)) {
        return text->getContent();
    }
    const auto* const input = dynamic_cast<const display::graphics::InputText*>(&object);
    return input != nullptr && !input->isSecure() ? input->getContent() : std::string();
}

}  // namespace orvane::embedding
