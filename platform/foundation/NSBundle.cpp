#include "platform/foundation/NSBundle.h"

#include <glib.h>

#include <algorithm>
#include <utility>

#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/NSPathUtilities.h"

namespace orvane::platform {

namespace {

bool isIdentifier(const std::string& text) {
    const bool dotsOnly = text.find_first_not_of('.') == std::string::npos;
    return !dotsOnly && std::all_of(text.begin(), text.end(), [](char c) {
        return g_ascii_isalnum(c) || c == '.' || c == '-' || c == '_';
    });
}

}  // namespace

std::optional<NSBundle> NSBundle::bundleWithIdentifier(const std::string& identifier) {
    if (isIdentifier(identifier)) {
        for (const std::string& directory : dataDirectories()) {
            NSBundle bundle(pathWithComponents({directory, "orvane", "bundles", identifier}));
            if (NSFileManager::defaultManager().fileExistsAtPath(bundle.resourcePath())) {
                return bundle;
            }
        }
    }
    return std::nullopt;
}

NSBundle::NSBundle(std::string path) : path_(std::move(path)) {}

std::string NSBundle::resourcePath() const {
    return pathWithComponents({path_, "Resources"});
}

}  // namespace orvane::platform
