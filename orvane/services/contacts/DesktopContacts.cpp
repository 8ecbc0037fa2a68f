#include "orvane/services/contacts/DesktopContacts.h"

#include <cstdint>
#include <mutex>
#include <optional>
#include <utility>

#include "orvane/services/contacts/vcard.h"
#include "orvane/services/createContacts.h"
#include "platform/dispatch/dispatch.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/sessionBus.h"

namespace orvane::services {

using Outcome = ContactsProvider::Outcome;
using Reason = ServiceFailure::Reason;

namespace {

// The number that means "do not wait until a book is connected with its server".
constexpr std::uint32_t kDoNotWait = UINT32_MAX;

template <typename Object>
struct Unref {
    void operator()(Object* object) const { g_object_unref(object); }
};
template <typename Object>
using Ref = std::unique_ptr<Object, Unref<Object>>;

// Takes the error.
ServiceFailure failureFrom(GError* error) {
    ServiceFailure failure{Reason::Failed, error != nullptr ? error->message : "no reason"};
    if (g_error_matches(error, E_CLIENT_ERROR, E_CLIENT_ERROR_PERMISSION_DENIED) != FALSE) {
        failure.reason = Reason::Denied;
    } else if (g_error_matches(error, E_CLIENT_ERROR, E_CLIENT_ERROR_REPOSITORY_OFFLINE) != FALSE ||
               g_error_matches(error, E_CLIENT_ERROR, E_CLIENT_ERROR_OFFLINE_UNAVAILABLE) !=
                   FALSE ||
               g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN) != FALSE) {
        failure.reason = Reason::Unavailable;
    }
    g_clear_error(&error);
    return failure;
}

}  // namespace

// What a view refers to: it may report after the provider has gone.
struct DesktopContacts::Watcher {
    DesktopContacts* provider;
    std::weak_ptr<bool> alive;
    std::string book;

    template <typename Handler>
    void connect(EBookClientView* view, const char* signal, Handler handler) const {
        g_signal_connect_data(
            view, signal, G_CALLBACK(handler), new Watcher(*this),
            [](void* data, GClosure*) { delete static_cast<Watcher*>(data); },
            static_cast<GConnectFlags>(0));
    }
    void watch(EBookClientView* view) const {
        const auto stored = +[](EBookClientView*, const GSList* cards, const Watcher* self) {
            if (!self->alive.expired()) {
                self->provider->cardsStored(self->book, cards);
            }
        };
        connect(view, "objects-added", stored);
        connect(view, "objects-modified", stored);
        connect(
            view, "objects-removed",
            +[](EBookClientView*, const GSList* uids, const Watcher* self) {
                std::vector<std::string> ids;
                for (; uids != nullptr; uids = uids->next) {
                    ids.push_back(self->book + "/" + static_cast<const char*>(uids->data));
                }
                if (!self->alive.expired()) {
                    self->provider->observer_.removed(ids);
                }
            });
        connect(
            view, "complete", +[](EBookClientView*, const GError*, const Watcher* self) {
                if (!self->alive.expired()) {
                    self->provider->viewIsComplete();
                }
            });
    }
};

// The connections to the address books, for background threads, one at a time.
class DesktopContacts::Books {
public:
    // A contact, and the connection to its book.
    struct Card {
        EBookClient* client = nullptr;  // borrowed
        Ref<EContact> contact = nullptr;
    };

    // Any thread: what is under way fails soon.
    void cancel() { g_cancellable_cancel(cancellable_.get()); }

    std::unique_lock<std::mutex> lock() { return std::unique_lock(mutex_); }

    // Connects to the books and lets `watcher` watch each. Sets how many views there are.
    Outcome open(Watcher watcher, std::size_t& views) {
        if (!platform::hasSessionBus()) {
            return ServiceFailure{Reason::Unavailable, "there is no session bus"};
        }
        GError* error = nullptr;
        registry_.reset(e_source_registry_new_sync(cancellable_.get(), &error));
        if (!registry_) {
            return failureFrom(error);
        }
        const Ref<ESource> preferred(e_source_registry_ref_default_address_book(registry_.get()));
        preferred_ = preferred ? e_source_get_uid(preferred.get()) : "";
        GList* const sources =
            e_source_registry_list_enabled(registry_.get(), E_SOURCE_EXTENSION_ADDRESS_BOOK);
        for (const GList* link = sources; link != nullptr; link = link->next) {
            auto* const source = static_cast<ESource*>(link->data);
            watcher.book = e_source_get_uid(source);
            if (const Outcome outcome = open(source, watcher)) {
                platform::NSLog("The address book '%s' cannot be read: %s",
                                e_source_get_display_name(source), outcome->message.c_str());
            }
        }
        g_list_free_full(sources, &g_object_unref);
        views = watched_.size();
        return {};
    }

    // Finds a contact by its id.
    Outcome find(const std::string& id, Card& card) {
        const std::size_t slash = id.find('/');
        card.client = clientOf(id.substr(0, slash));
        if (slash == std::string::npos || card.client == nullptr) {
            return missing(id);
        }
        GError* error = nullptr;
        EContact* contact = nullptr;
        if (e_book_client_get_contact_sync(card.client, id.substr(slash + 1).c_str(), &contact,
                                           cancellable_.get(), &error) == FALSE) {
            return failureFrom(error);
        }
        card.contact.reset(contact);
        return {};
    }

    Change add(const Contact& contact) {
        EBookClient* const client = clientOf(preferred_);
        if (client == nullptr) {
            return {{}, ServiceFailure{Reason::Unavailable, "there is no address book"}};
        }
        const Ref<EContact> card(e_contact_new());
        services::store(contact, card.get());
        GError* error = nullptr;
        char* uid = nullptr;
        if (e_book_client_add_contact_sync(client, card.get(), E_BOOK_OPERATION_FLAG_NONE, &uid,
                                           cancellable_.get(), &error) == FALSE) {
            return {{}, failureFrom(error)};
        }
        Change change{contactFrom(card.get())};
        change.contact.id = preferred_ + "/" + uid;
        g_free(uid);
        return change;
    }

    // `edit` changes the card of the contact with the id.
    template <typename Edit>
    Change change(const std::string& id, const Edit& edit) {
        Card card;
        if (const Outcome outcome = find(id, card)) {
            return {{}, outcome};
        }
        edit(card.contact.get());
        GError* error = nullptr;
        if (e_book_client_modify_contact_sync(card.client, card.contact.get(),
                                              E_BOOK_OPERATION_FLAG_NONE, cancellable_.get(),
                                              &error) == FALSE) {
            return {{}, failureFrom(error)};
        }
        Change change{contactFrom(card.contact.get())};
        change.contact.id = id;
        return change;
    }

    Outcome remove(const std::string& id) {
        const std::size_t slash = id.find('/');
        EBookClient* const client = clientOf(id.substr(0, slash));
        if (slash == std::string::npos || client == nullptr) {
            return missing(id);
        }
        GError* error = nullptr;
        if (e_book_client_remove_contact_by_uid_sync(client, id.substr(slash + 1).c_str(),
                                                     E_BOOK_OPERATION_FLAG_NONE, cancellable_.get(),
                                                     &error) == FALSE) {
            return failureFrom(error);
        }
        return {};
    }

private:
    struct Watched {
        std::string book;
        Ref<EBookClient> client;
        Ref<EBookClientView> view;
    };

    static ServiceFailure missing(const std::string& id) {
        return {Reason::Failed, "there is no contact with the id '" + id + "'"};
    }

    Outcome open(ESource* source, const Watcher& watcher) {
        GError* error = nullptr;
        Ref<EBookClient> client(reinterpret_cast<EBookClient*>(
            e_book_client_connect_sync(source, kDoNotWait, cancellable_.get(), &error)));
        EBookClientView* view = nullptr;
        if (!client ||
            e_book_client_get_view_sync(client.get(), R"((contains "x-evolution-any-field" ""))",
                                        &view, cancellable_.get(), &error) == FALSE) {
            return failureFrom(error);
        }
        Watched watched{watcher.book, std::move(client), Ref<EBookClientView>(view)};
        watcher.watch(view);
        e_book_client_view_start(view, &error);
        if (error != nullptr) {
            return failureFrom(error);
        }
        watched_.push_back(std::move(watched));
        return {};
    }

    EBookClient* clientOf(const std::string& book) const {
        for (const Watched& watched : watched_) {
            if (watched.book == book) {
                return watched.client.get();
            }
        }
        return nullptr;
    }

    std::mutex mutex_;
    const Ref<GCancellable> cancellable_{g_cancellable_new()};
    Ref<ESourceRegistry> registry_;
    std::string preferred_;
    std::vector<Watched> watched_;
};

DesktopContacts::DesktopContacts() : books_(std::make_shared<Books>()) {}

DesktopContacts::~DesktopContacts() {
    books_->cancel();
}

// Runs `work` on a background thread, and `done` with its result on the main thread.
template <typename Work, typename Done>
void DesktopContacts::perform(Work work, Done done) {
    platform::dispatchBackgroundAsync([books = books_, alive = std::weak_ptr<bool>(alive_),
                                       work = std::move(work), done = std::move(done)]() mutable {
        auto lock = books->lock();
        auto result = work(*books);
        lock.unlock();
        platform::dispatchMainAsync(
            [alive = std::move(alive), done = std::move(done), result = std::move(result)] {
                if (!alive.expired()) {
                    done(result);
                }
            });
    });
}

void DesktopContacts::open(Observer observer) {
    observer_ = std::move(observer);
    struct Result {
        std::size_t views = 0;
        Outcome outcome = {};
    };
    perform(
        [watcher = Watcher{this, alive_, {}}](Books& books) {
            Result result;
            result.outcome = books.open(watcher, result.views);
            return result;
        },
        [this](const Result& result) { opened(result.views, result.outcome); });
}

void DesktopContacts::opened(std::size_t views, const Outcome& outcome) {
    isOpen_ = true;
    views_ = views;
    if (outcome || completeViews_ >= views_) {
        observer_.ready(outcome);
    }
}

// Views may be complete before open() has reported how many there are.
void DesktopContacts::viewIsComplete() {
    ++completeViews_;
    if (isOpen_ && completeViews_ == views_) {
        observer_.ready({});
    }
}

void DesktopContacts::cardsStored(const std::string& book, const GSList* cards) {
    std::vector<Contact> contacts;
    for (; cards != nullptr; cards = cards->next) {
        contacts.push_back(contactFrom(static_cast<EContact*>(cards->data)));
        contacts.back().id = book + "/" + contacts.back().id;
    }
    observer_.stored(std::move(contacts));
}

void DesktopContacts::store(Contact contact, Stored done) {
    perform(
        [contact = std::move(contact)](Books& books) {
            return contact.id.empty() ? books.add(contact)
                                      : books.change(contact.id, [&](EContact* card) {
                                            services::store(contact, card);
                                        });
        },
        [done = std::move(done)](const Change& change) { done(change.contact, change.outcome); });
}

void DesktopContacts::remove(const std::string& id,
                             std::function<void(const Outcome& outcome)> done) {
    perform([id](Books& books) { return books.remove(id); }, std::move(done));
}

void DesktopContacts::readPhoto(
    const std::string& id,
    std::function<void(const std::string& bytes, const Outcome& outcome)> done) {
    struct Result {
        std::string bytes = {};
        Outcome outcome = {};
    };
    perform(
        [id](Books& books) {
            Result result;
            Books::Card card;
            result.outcome = books.find(id, card);
            if (!result.outcome) {
                result.bytes = photoOf(card.contact.get());
            }
            return result;
        },
        [done = std::move(done)](const Result& result) { done(result.bytes, result.outcome); });
}

void DesktopContacts::storePhoto(const std::string& id, const std::string& bytes, Stored done) {
    perform(
        [id, bytes](Books& books) {
            return books.change(id, [&](EContact* card) { services::storePhoto(bytes, card); });
        },
        [done = std::move(done)](const Change& change) { done(change.contact, change.outcome); });
}

}  // namespace orvane::services

orvane::services::ContactsProvider* orvane_create_contacts() {
    return new orvane::services::DesktopContacts();
}
