#pragma once

#include <cstdlib>
#include <string>

#include "platform/coregraphics/CGDataProvider.h"
#include "platform/coretext/CGFont.h"
#include "platform/coretext/CTFontManager.h"

namespace orvane::platform {

inline std::string testFont(const std::string& name) {
    return std::string(ORVANE_TEST_FONTS) + "/" + name;
}

// Registers the fonts of the repository and hides those of the system, so that measurements and
// pictures are equal on every machine. Works once per process, before any other use of fonts.
inline void registerTestFonts() {
    static const bool once = [] {
        setenv("FONTCONFIG_FILE", testFont("../../tests/coretext/no-system-fonts.conf").c_str(), 1);
        for (const char* const name :
             {"DejaVuSans.ttf", "DejaVuSans-Bold.ttf", "DejaVuSansMono.ttf", "DejaVuSerif.ttf",
              "DroidSansFallback-Subset.ttf", "NotoColorEmoji-Subset.ttf"}) {
            const auto provider = CGDataProvider::createWithFilename(testFont(name));
            // The name is not the path of a file: registered fonts are used from their data.
            const auto font = CGFont::createWithDataProvider(*provider, name);
            if (CTFontManager::registerGraphicsFont(*font)) {
                return false;
            }
        }
        return true;
    }();
    (void)once;
}

}  // namespace orvane::platform
