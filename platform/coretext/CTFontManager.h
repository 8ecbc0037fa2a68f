#pragma once

#include <optional>
#include <string>

#include "orvane/commons/Export.h"

namespace orvane::platform {

class CGFont;

// The fonts that the process has added to those of the system.
class ORVANE_EXPORT CTFontManager {
public:
    // Makes the font known under its names to every text made from now on. What went wrong, if
    // something did: a font of that PostScript name is registered already, or the font library
    // refuses the file.
    [[nodiscard]] static std::optional<std::string> registerGraphicsFont(const CGFont& font);
};

}  // namespace orvane::platform
