#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "orvane/services/Contact.h"

namespace orvane::services {

// Which contacts ContactsService::find passes to the application, as data.
struct ContactsQuery {
    // Words that are all part of the name, the organization or an address of mail, without regard
    // to case and diacritics ("muller" finds "Müller"); or digits that are part of a number. An
    // empty text finds every contact.
    std::string text = {};
    // The page: how many of the contacts found to skip, and how many to pass at most.
    std::size_t offset = 0;
    std::size_t limit = 100;
};

// What was found.
struct ContactsPage {
    // By name, without regard to case and diacritics.
    std::vector<Contact> contacts = {};
    // Where the page begins.
    std::size_t offset = 0;
    // How many contacts all pages together have.
    std::size_t total = 0;
};

}  // namespace orvane::services
