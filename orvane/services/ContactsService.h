#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "orvane/commons/Export.h"
#include "orvane/commons/virtual_enable_shared_from_this.h"
#include "orvane/notification/Notifier.h"
#include "orvane/services/Contact.h"
#include "orvane/services/ContactsChangedEvent.h"
#include "orvane/services/ContactsProvider.h"
#include "orvane/services/ContactsQuery.h"
#include "orvane/services/ServiceCall.h"
#include "orvane/services/ServiceFailure.h"

namespace orvane::services {

// The user's address book: the address books of evolution-data-server that are enabled. The first
// call opens the library liborvane-contacts.so and reads all contacts into memory; from then on,
// the service follows the changes that any program makes, and sends a ContactsChangedEvent to its
// listeners. Where the library or the address book is missing, the book is empty, the log has one
// line, and changes fail with the reason Unavailable.
//
// Each call returns at once. One callback follows on the main thread, never before the call has
// returned: the first one with the result, or `failed` with the reason. What they throw is logged.
// A change that is not answered within 30 seconds of the display's clock has TimedOut. Main thread
// only.
class ORVANE_EXPORT ContactsService
    : public notification::Notifier<ContactsService>,
      public virtual commons::virtual_enable_shared_from_this<ContactsService> {
public:
    // What a call returns. It may be dropped.
    using Call = std::shared_ptr<ServiceCall>;

    // Returns the service of the process, which the first call creates. Contacts nothing.
    static std::shared_ptr<ContactsService> instance();
    // Releases the instance; the next instance() creates a new one. A host calls it at the end of a
    // session.
    static void reset();

    // For another address book than the desktop's, for example of a test.
    explicit ContactsService(std::unique_ptr<ContactsProvider> provider);
    ~ContactsService() override;
    ContactsService(const ContactsService&) = delete;
    ContactsService& operator=(const ContactsService&) = delete;

    // Passes a page of the contacts that match.
    Call find(const ContactsQuery& query, std::function<void(const ContactsPage& page)> found,
              FailureCallback failed = {});
    // Passes the contact with an id. Fails if there is none.
    Call read(const std::string& id, std::function<void(const Contact& contact)> found,
              FailureCallback failed = {});
    // Adds a contact, whose id is ignored, to the user's default address book, and passes it with
    // its id.
    Call create(Contact contact, std::function<void(const Contact& contact)> created = {},
                FailureCallback failed = {});
    // Replaces what a Contact contains of the contact with its id; all else that the address book
    // knows of it is kept.
    Call change(Contact contact, std::function<void(const Contact& contact)> changed = {},
                FailureCallback failed = {});
    // Removes the contact with an id.
    Call remove(const std::string& id, std::function<void()> removed = {},
                FailureCallback failed = {});
    // Passes the contact's photo as the bytes of a picture file, which Image::setContent takes;
    // empty if it has none.
    Call readPhoto(const std::string& id, std::function<void(const std::string& bytes)> found,
                   FailureCallback failed = {});
    // Replaces the contact's photo by the bytes of a PNG or JPEG file. Removes it if they are
    // empty.
    Call storePhoto(const std::string& id, const std::string& bytes,
                    std::function<void()> stored = {}, FailureCallback failed = {});

private:
    struct State;

    void open();
    void becomeReady();
    void stored(std::vector<Contact> contacts);
    void removed(const std::vector<std::string>& ids);
    void report(const ContactsChangedEvent& event);
    Call call(FailureCallback failed, std::function<void(const Call& call)> begin);
    Call ask(FailureCallback failed,
             std::function<void(ContactsProvider& provider, const Call& call)> begin);
    ContactsProvider::Stored ending(const Call& call,
                                    std::function<void(const Contact& contact)> deliver);
    Call store(Contact contact, std::function<void(const Contact& contact)> done,
               FailureCallback failed);

    static std::shared_ptr<ContactsService> exclusiveInstance_;  // defined in runtime/statics.cpp

    std::unique_ptr<State> state_;
};

}  // namespace orvane::services
