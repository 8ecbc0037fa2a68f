#include "platform/appkit/NSWorkspace.h"

#include <gio/gio.h>

namespace orvane::platform {

bool NSWorkspace::openURL(const std::string& url) {
    // GIO would treat a text without a scheme as the name of a file.
    char* scheme = g_uri_parse_scheme(url.c_str());
    if (scheme == nullptr) {
        return false;
    }
    g_free(scheme);
    return g_app_info_launch_default_for_uri(url.c_str(), nullptr, nullptr) == TRUE;
}

}  // namespace orvane::platform
