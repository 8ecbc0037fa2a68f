#pragma once

#include <optional>
#include <string>

#include "orvane/commons/Export.h"

namespace orvane::platform {

class CGFont;

// Adds fonts to the process.
class ORVANE_EXPORT CTFontManager {
public:
    // Makes the font available under its names to all texts created afterwards. Returns an error
    // message if a font of that PostScript name is already registered or the file is refused.
    [[nodiscard]] static std::optional<std::string> registerGraphicsFont(const CGFont& font);
};

}  // namespace orvane::platform
