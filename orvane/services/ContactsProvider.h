#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "orvane/services/Contact.h"
#include "orvane/services/ServiceFailure.h"

namespace orvane::services {

// The address book behind ContactsService: that of the desktop, or one that a test of an
// application derives from this class. Every function returns at once; the callbacks are called on
// the main thread, never before the function has returned, and not after the destructor. Main
// thread only.
class ContactsProvider {
public:
    // What the address book reports from open() on.
    struct Observer {
        // Contacts that are new or have changed.
        std::function<void(std::vector<Contact> contacts)> stored;
        // The ids of contacts that are gone.
        std::function<void(const std::vector<std::string>& ids)> removed;
        // Called once, when all contacts have been passed; with what keeps them from being read.
        std::function<void(const std::optional<ServiceFailure>& failure)> ready;
    };
    // The result of a change: nothing, or why it was not made.
    using Outcome = std::optional<ServiceFailure>;
    // Called with the contact as it is stored, and with its id.
    using Stored = std::function<void(const Contact& contact, const Outcome& outcome)>;

    virtual ~ContactsProvider() = default;

    // Reads all contacts and watches them from then on. Called once, before the others.
    virtual void open(Observer observer) = 0;
    // Creates the contact if it has no id; otherwise changes the one with the id, of which what a
    // Contact does not contain is kept.
    virtual void store(Contact contact, Stored done) = 0;
    // Removes the contact with an id.
    virtual void remove(const std::string& id,
                        std::function<void(const Outcome& outcome)> done) = 0;
    // Passes the bytes of the contact's picture file; none if it has no photo.
    virtual void readPhoto(
        const std::string& id,
        std::function<void(const std::string& bytes, const Outcome& outcome)> done) = 0;
    // Replaces the photo by the bytes of a PNG or JPEG file; removes it if there are none.
    virtual void storePhoto(const std::string& id, const std::string& bytes, Stored done) = 0;
};

}  // namespace orvane::services
