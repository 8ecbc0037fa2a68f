#include "orvane/services/ContactsService.h"

#include <unordered_set>
#include <utility>
#include <vector>

#include "orvane/commons/guardedCall.h"
#include "orvane/services/ContactsIndex.h"
#include "orvane/services/ContactsProvider.h"
#include "orvane/services/createContacts.h"
#include "orvane/services/families.h"
#include "platform/dispatch/dispatch.h"
#include "platform/foundation/LibraryFunctions.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/runtimeLibrary.h"
#include "platform/quartzcore/CAMediaTime.h"
#include "platform/quartzcore/CATimer.h"

namespace orvane::services {

using Reason = ServiceFailure::Reason;

namespace {

// How long the address book may take, in seconds, until calls go on with what it has passed.
constexpr double kOpeningPatience = 10;
// How long a change or a photo may take, in seconds.
constexpr double kPatience = 30;

std::unique_ptr<ContactsProvider> createDesktopProvider() {
    const std::string path = platform::runtimeLibrary(ORVANE_CONTACTS_LIBRARY);
    platform::LibraryFunctions functions(path.c_str(), "There are no contacts");
    decltype(&orvane_create_contacts) create = nullptr;
    functions.find(create, "orvane_create_contacts");
    return std::unique_ptr<ContactsProvider>(functions.isComplete() ? create() : nullptr);
}

template <typename Callback, typename... Results>
void callIfThere(const Callback& callback, const Results&... results) {
    if (callback) {
        callback(results...);
    }
}

}  // namespace

struct ContactsService::State {
    std::unique_ptr<ContactsProvider> provider;
    ContactsIndex index = {};
    // Removed by a call; the address book may still report older changes of them.
    std::unordered_set<std::string> removed = {};
    bool isOpen = false;
    bool isReady = false;
    std::vector<std::function<void()>> waiting = {};
    platform::CATimer deadline = {};
    // Calls that begin after the destructor find this expired.
    std::shared_ptr<bool> alive = std::make_shared<bool>(true);
};

std::shared_ptr<ContactsService> ContactsService::instance() {
    if (!exclusiveInstance_) {
        exclusiveInstance_ = std::make_shared<ContactsService>(nullptr);
    }
    return exclusiveInstance_;
}

void ContactsService::reset() {
    exclusiveInstance_.reset();
}

ContactsService::ContactsService(std::unique_ptr<ContactsProvider> provider)
    : state_(std::make_unique<State>()) {
    state_->provider = std::move(provider);
}

ContactsService::~ContactsService() = default;

void ContactsService::open() {
    if (std::exchange(state_->isOpen, true)) {
        return;
    }
    if (!state_->provider) {
        state_->provider = createDesktopProvider();
    }
    if (!state_->provider) {
        becomeReady();
        return;
    }
    state_->deadline.start(platform::CACurrentMediaTime() + kOpeningPatience, 0, [this] {
        platform::NSLog("There are no contacts yet: the address book does not answer");
        becomeReady();
    });
    state_->provider->open({[this](std::vector<Contact> contacts) { stored(std::move(contacts)); },
                            [this](const std::vector<std::string>& ids) { removed(ids); },
                            [this](const std::optional<ServiceFailure>& failure) {
                                if (failure) {
                                    platform::NSLog("There are no contacts: %s",
                                                    failure->message.c_str());
                                }
                                becomeReady();
                            }});
}

void ContactsService::becomeReady() {
    state_->deadline.stop();
    state_->isReady = true;
    for (const auto& begin : std::exchange(state_->waiting, {})) {
        begin();  // may destroy this object, which it checks
    }
}

void ContactsService::stored(std::vector<Contact> contacts) {
    ContactsChangedEvent event;
    for (Contact& contact : contacts) {
        const std::string id = contact.id;
        if (state_->removed.contains(id)) {
            continue;
        }
        const ContactsIndex::Change change = state_->index.store(std::move(contact));
        if (change != ContactsIndex::Change::None) {
            (change == ContactsIndex::Change::Added ? event.added : event.changed).push_back(id);
        }
    }
    if (!event.added.empty() || !event.changed.empty()) {
        report(event);
    }
}

void ContactsService::removed(const std::vector<std::string>& ids) {
    ContactsChangedEvent event;
    for (const std::string& id : ids) {
        if (state_->index.remove(id)) {
            event.removed.push_back(id);
        }
    }
    if (!event.removed.empty()) {
        report(event);
    }
}

// The contacts of the beginning are no change.
void ContactsService::report(const ContactsChangedEvent& event) {
    if (state_->isReady) {
        commons::guardedCall("exception of a listener for contacts", [&] { notify(event); });
    }
}

// Begins a call when the address book is ready, unless it is cancelled before.
ContactsService::Call ContactsService::call(FailureCallback failed,
                                            std::function<void(const Call& call)> begin) {
    const Call call(new ServiceCall(std::move(failed)));
    if (isFamilyDenied(Family::Contacts)) {
        platform::dispatchMainAsync([call] {
            call->fail({Reason::Denied, "the host denies contacts"});
        });
        return call;
    }
    open();
    auto start = [call, begin = std::move(begin), alive = std::weak_ptr<bool>(state_->alive)] {
        if (!alive.expired() && call->isPending()) {
            begin(call);
        }
    };
    if (state_->isReady) {
        platform::dispatchMainAsync(std::move(start));
    } else {
        state_->waiting.push_back(std::move(start));
    }
    return call;
}

// The same for a call of the provider.
ContactsService::Call ContactsService::ask(
    FailureCallback failed,
    std::function<void(ContactsProvider& provider, const Call& call)> begin) {
    return call(std::move(failed), [this, begin = std::move(begin)](const Call& call) {
        if (state_->provider) {
            call->limit(kPatience);
            begin(*state_->provider, call);
        } else {
            call->fail({Reason::Unavailable, "there is no address book"});
        }
    });
}

ContactsService::Call ContactsService::find(const ContactsQuery& query,
                                            std::function<void(const ContactsPage& page)> found,
                                            FailureCallback failed) {
    return call(std::move(failed), [this, query, found = std::move(found)](const Call& call) {
        call->finish([&] { callIfThere(found, state_->index.find(query)); });
    });
}

ContactsService::Call ContactsService::read(const std::string& id,
                                            std::function<void(const Contact& contact)> found,
                                            FailureCallback failed) {
    return call(std::move(failed), [this, id, found = std::move(found)](const Call& call) {
        if (const Contact* const contact = state_->index.find(id)) {
            call->finish([&, copy = *contact] { callIfThere(found, copy); });
        } else {
            call->fail({Reason::Failed, "there is no contact with the id '" + id + "'"});
        }
    });
}

ContactsService::Call ContactsService::create(Contact contact,
                                              std::function<void(const Contact& contact)> created,
                                              FailureCallback failed) {
    contact.id.clear();
    return store(std::move(contact), std::move(created), std::move(failed));
}

ContactsService::Call ContactsService::change(Contact contact,
                                              std::function<void(const Contact& contact)> changed,
                                              FailureCallback failed) {
    if (contact.id.empty()) {
        return call(std::move(failed), [](const Call& call) {
            call->fail({Reason::Failed, "a contact without an id cannot be changed"});
        });
    }
    return store(std::move(contact), std::move(changed), std::move(failed));
}

// Ends a call that has stored something, and `deliver` passes the result to the application. The
// address book reports the change, too, but maybe later.
ContactsProvider::Stored ContactsService::ending(
    const Call& call, std::function<void(const Contact& contact)> deliver) {
    return [this, call, deliver = std::move(deliver)](const Contact& contact,
                                                      const ContactsProvider::Outcome& outcome) {
        if (outcome) {
            call->fail(*outcome);
        } else {
            stored({contact});
            call->finish([&] { callIfThere(deliver, contact); });
        }
    };
}

ContactsService::Call ContactsService::store(Contact contact,
                                             std::function<void(const Contact& contact)> done,
                                             FailureCallback failed) {
    return ask(std::move(failed), [this, contact = std::move(contact), done = std::move(done)](
                                      ContactsProvider& provider, const Call& call) {
        provider.store(contact, ending(call, done));
    });
}

ContactsService::Call ContactsService::remove(const std::string& id, std::function<void()> done,
                                              FailureCallback failed) {
    return ask(std::move(failed), [this, id, done = std::move(done)](ContactsProvider& provider,
                                                                     const Call& call) {
        provider.remove(id, [this, id, call, done](const ContactsProvider::Outcome& outcome) {
            if (outcome) {
                call->fail(*outcome);
            } else {
                state_->removed.insert(id);
                removed({id});
                call->finish([&] { callIfThere(done); });
            }
        });
    });
}

ContactsService::Call ContactsService::readPhoto(
    const std::string& id, std::function<void(const std::string& bytes)> found,
    FailureCallback failed) {
    return ask(std::move(failed),
               [id, found = std::move(found)](ContactsProvider& provider, const Call& call) {
                   provider.readPhoto(id, [call, found](const std::string& bytes,
                                                        const ContactsProvider::Outcome& outcome) {
                       if (outcome) {
                           call->fail(*outcome);
                       } else {
                           call->finish([&] { callIfThere(found, bytes); });
                       }
                   });
               });
}

ContactsService::Call ContactsService::storePhoto(const std::string& id, const std::string& bytes,
                                                  std::function<void()> done,
                                                  FailureCallback failed) {
    return ask(std::move(failed), [this, id, bytes, done = std::move(done)](
                                      ContactsProvider& provider, const Call& call) {
        provider.storePhoto(id, bytes, ending(call, [done](const Contact&) { callIfThere(done); }));
    });
}

}  // namespace orvane::services
