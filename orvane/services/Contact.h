#pragma once

#include <string>
#include <vector>

namespace orvane::services {

// A person or an organization in the user's address book, as data. Texts are UTF-8.
struct Contact {
    // A telephone number or an address of mail.
    struct Entry {
        // "home", "work", "cell", "fax" or "other".
        std::string label = "other";
        std::string value = {};

        friend bool operator==(const Entry&, const Entry&) = default;
    };

    // Given by the address book; empty for one that is not stored yet.
    std::string id = {};
    // The whole name, as it is shown.
    std::string name = {};
    std::string givenName = {};
    std::string familyName = {};
    std::string organization = {};
    std::vector<Entry> numbers = {};
    std::vector<Entry> mails = {};
    std::string note = {};
    // Whether ContactsService::readPhoto finds one. Storing a contact does not change its photo.
    bool hasPhoto = false;

    friend bool operator==(const Contact&, const Contact&) = default;
};

}  // namespace orvane::services
