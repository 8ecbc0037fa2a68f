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

// The fonts of the repository and none of the system's, so that what is measured and painted is the
// same on every machine. Once a process; nothing else asks for a font in it before.
inline void registerTestFonts() {
    static const bool once = [] {
        setenv("FONTCONFIG_FILE", testFont("../../tests/coretext/no-system-fonts.conf").c_str(), 1);
        for (const char* const name :
             {"DejaVuSans.ttf", "DejaVuSans-Bold.ttf", "DejaVuSansMono.ttf", "DejaVuSerif.ttf",
              "DroidSansFallback-Subset.ttf", "NotoColorEmoji-Subset.ttf"}) {
            const auto provider = CGDataProvider::createWithFilename(testFont(name));
            const auto font = CGFont::createWithDataProvider(*provider, testFont(name));
            if (CTFontManager::registerGraphicsFont(*font)) {
                return false;
            }
        }
        return true;
    }();
    (void)once;
}

}  // namespace orvane::platform
