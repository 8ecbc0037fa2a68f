#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "orvane/services/Contact.h"
#include "orvane/services/ContactsQuery.h"

namespace orvane::services {

// All contacts of the address book, in order and prepared for searches. Reading it costs the
// address book nothing, so pages and searches while the user types are fast.
class ContactsIndex {
public:
    enum class Change { None, Added, Changed };

    // Adds a contact, or replaces the one with its id.
    Change store(Contact contact);
    // Returns whether there was such a contact.
    bool remove(const std::string& id);
    // Null if there is none; valid until the next change.
    const Contact* find(const std::string& id) const;
    ContactsPage find(const ContactsQuery& query);

private:
    struct Entry {
        Contact contact;
        std::string order;   // the folded name, or what is shown instead of one
        std::string text;    // folded, for searches
        std::string digits;  // of the numbers, separated by spaces
    };

    static Entry prepare(Contact contact);

    std::unordered_map<std::string, Entry> entries_;
    std::vector<const Entry*> sorted_;  // empty after a change
};

// Returns a text in UTF-8 without diacritics and differences of case.
[[nodiscard]] std::string folded(const std::string& text);

}  // namespace orvane::services
