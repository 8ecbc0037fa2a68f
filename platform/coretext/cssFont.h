#pragma once

#include <string>

#include "orvane/commons/Export.h"

namespace orvane::platform {

class CTFont;

// Returns the properties of CSS that select a font in the widgets of the desktop, each with a
// semicolon. A font that the application has registered becomes known to fontconfig's own
// configuration, where the desktop looks. Main thread only.
ORVANE_EXPORT std::string cssFont(const CTFont& font);

}  // namespace orvane::platform
