#pragma once

#include "orvane/commons/Export.h"

extern "C" {
// Makes windows show pages of the web, if WebKit can run here; otherwise the log has one line.
// Exported by liborvane-web.so, which is a library of its own because it loads many others.
ORVANE_EXPORT void orvane_register_web();
}
