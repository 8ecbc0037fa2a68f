#pragma once

#include <optional>
#include <string>
#include <vector>

#include "orvane/commons/Export.h"

namespace orvane::platform {

class CGFont;

// How the pixels of letters are computed, as far as a desktop decides it.
struct CTFontSmoothing {
    // How far letters are moved to whole pixels.
    enum class HintStyle { None, Slight, Medium, Full };

    // Without a value, the settings of fontconfig decide.
    std::optional<HintStyle> hintStyle;
    std::optional<bool> isAntialiased;
};

// The fonts of the process.
class ORVANE_EXPORT CTFontManager {
public:
    // Makes the font available under its names to all texts created afterwards. Returns an error
    // message if a font of that PostScript name is already registered or the file is refused.
    [[nodiscard]] static std::optional<std::string> registerGraphicsFont(const CGFont& font);

    // Paths of the registered fonts for other programs, valid as long as this one runs. Any thread.
    [[nodiscard]] static std::vector<std::string> registeredFiles();

    // Applies to all texts created afterwards. What fontconfig turns off for a font stays off. May
    // be called on any thread.
    static void setSmoothing(const CTFontSmoothing& smoothing);
};

}  // namespace orvane::platform
