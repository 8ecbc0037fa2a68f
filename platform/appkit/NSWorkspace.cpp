#include "platform/appkit/NSWorkspace.h"

#include <gio/gio.h>

namespace orvane::platform {

bool NSWorkspace::openURL(const std::string& url) {
    // What has no scheme is no address; the desktop would take it for a file's name.
    char* scheme = g_uri_parse_scheme(url.c_str());
    if (!scheme) {
        return false;
    }
    g_free(scheme);
    return g_app_info_launch_default_for_uri(url.c_str(), nullptr, nullptr) == TRUE;
}

}  // namespace orvane::platform
