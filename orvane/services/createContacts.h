#pragma once

#include "orvane/commons/Export.h"

namespace orvane::services {
class ContactsProvider;
}

extern "C" {
// Creates the desktop's address book. Exported by liborvane-contacts.so, which is a library of its
// own because it loads many others. The caller owns the result.
ORVANE_EXPORT orvane::services::ContactsProvider* orvane_create_contacts();
}
