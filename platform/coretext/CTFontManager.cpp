#include "platform/coretext/CTFontManager.h"

#include "platform/coretext/CGFont.h"
#include "platform/coretext/FontMap.h"

namespace orvane::platform {

std::optional<std::string> CTFontManager::registerGraphicsFont(const CGFont& font) {
    FontMap::Locked map;
    if (!font.postScriptName().empty() && map->isRegistered(font.postScriptName())) {
        return "The font '" + font.postScriptName() + "' is already registered.";
    }
    if (!map->addApplicationFont(font.bytes())) {
        return "The file '" + font.file() + "' could not be registered.";
    }
    return std::nullopt;
}

std::vector<std::string> CTFontManager::registeredFiles() {
    return FontMap::registeredFiles();
}

void CTFontManager::setSmoothing(const CTFontSmoothing& smoothing) {
    FontMap::setSmoothing(smoothing);
}

}  // namespace orvane::platform
