#pragma once

#include <gio/gio.h>

namespace orvane::platform {

// Returns whether the user's session has a bus. Without an address, GIO would try to start one.
inline bool hasSessionBus() {
    char* const address = g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
    const bool isThere = address != nullptr && g_str_has_prefix(address, "autolaunch:") == FALSE;
    g_free(address);
    return isThere;
}

}  // namespace orvane::platform
