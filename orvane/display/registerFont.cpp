#include "orvane/display/registerFont.h"

#include "platform/coregraphics/CGDataProvider.h"
#include "platform/coretext/CGFont.h"
#include "platform/coretext/CTFontManager.h"
#include "platform/foundation/NSData.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/NSLog.h"

namespace orvane::display {

void registerFont(const std::string& path) {
    const auto data = platform::NSFileManager::defaultManager().contentsAtPath(path);
    if (!data) {
        return;
    }
    const auto provider = platform::CGDataProvider::createWithData(
        commons::ByteArray::createFromArray(data->bytes(), data->length()));
    const auto font = platform::CGFont::createWithDataProvider(*provider, path);
    if (!font) {
        platform::NSLog("Failed to load font from file '%s'", path.c_str());
        return;
    }
    if (const auto error = platform::CTFontManager::registerGraphicsFont(*font)) {
        platform::NSLog("Failed to load font: %s", error->c_str());
    }
}

}  // namespace orvane::display
