#pragma once

#include <string>
#include <vector>

#include "orvane/notification/Listener.h"

namespace orvane::services {

class ContactsService;

// Sent to the listeners of ContactsService when the address book has changed, by this application
// or by another one. The lists contain ids of contacts.
struct ContactsChangedEvent {
    using listener_type = notification::Listener<ContactsService, ContactsChangedEvent, void>;

    std::vector<std::string> added = {};
    std::vector<std::string> changed = {};
    std::vector<std::string> removed = {};
};

}  // namespace orvane::services
