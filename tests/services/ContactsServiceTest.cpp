#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "orvane/notification/Listeners.h"
#include "orvane/services/ContactsProvider.h"
#include "orvane/services/ContactsService.h"
#include "orvane/services/families.h"
#include "platform/dispatch/dispatch.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace {

using namespace orvane::services;
using orvane::platform::CAVirtualClock;
using Reason = ServiceFailure::Reason;

Contact person(const std::string& id, const std::string& name, const std::string& number = "") {
    Contact contact;
    contact.id = id;
    contact.name = name;
    if (!number.empty()) {
        contact.numbers = {{"home", number}};
    }
    return contact;
}

// An address book that answers when the test says so.
class ScriptedContacts : public ContactsProvider {
public:
    explicit ScriptedContacts(ScriptedContacts*& self) { self = this; }

    void open(Observer given) override { observer = std::move(given); }
    void store(Contact contact, Stored done) override {
        if (contact.id.empty()) {
            contact.id = "new";
        }
        answers.push_back([contact, done](const Outcome& outcome) { done(contact, outcome); });
    }
    void remove(const std::string&, std::function<void(const Outcome&)> done) override {
        answers.push_back(std::move(done));
    }
    void readPhoto(const std::string& id,
                   std::function<void(const std::string&, const Outcome&)> done) override {
        answers.push_back([id, done](const Outcome& outcome) { done("photo of " + id, outcome); });
    }
    void storePhoto(const std::string& id, const std::string&, Stored done) override {
        answers.push_back(
            [id, done](const Outcome& outcome) { done(person(id, "Anna"), outcome); });
    }
    void answer(const Outcome& outcome = {}) {
        for (const auto& call : std::exchange(answers, {})) {
            call(outcome);
        }
    }

    Observer observer;
    std::vector<std::function<void(const Outcome&)>> answers;
};

class Contacts : public testing::Test {
protected:
    void open(std::vector<Contact> contacts) {
        service->find({}, {});
        book->observer.stored(std::move(contacts));
        book->observer.ready({});
        run();
    }
    static void run() {
        while (orvane::platform::drainMainQueue()) {
        }
    }
    std::string namesOf(const ContactsQuery& query) {
        std::string names = "none";
        service->find(query, [&](const ContactsPage& page) {
            names = std::to_string(page.total) + ":";
            for (const Contact& contact : page.contacts) {
                names += " " + contact.name;
            }
        });
        EXPECT_EQ(names, "none") << "before find has returned";
        run();
        return names;
    }
    FailureCallback noteFailure() {
        return [this](const ServiceFailure& failure) { failures.push_back(failure.reason); };
    }

    CAVirtualClock clock;
    ScriptedContacts* book = nullptr;
    std::shared_ptr<ContactsService> service =
        std::make_shared<ContactsService>(std::make_unique<ScriptedContacts>(book));
    std::vector<Reason> failures;
};

}  // namespace

TEST_F(Contacts, AreFoundByNameAndNumberAndComeInPages) {
    Contact office = person("5", "", "");
    office.organization = "Zürich Tours";
    office.mails = {{"work", "info@tours.example"}};
    open({person("1", "Óscar Wirth", "+41 (44) 123-45-67"), person("2", "anna Müller"),
          person("3", "Anna Zett", "0441234"), person("4", "Bø"), office});
    const struct {
        const char* text;
        std::size_t offset;
        std::size_t limit;
        const char* names;
    } cases[] = {
        {"", 0, 9, "5: anna Müller Anna Zett Bø Óscar Wirth "},
        {"", 1, 2, "5: Anna Zett Bø"},
        {"", 9, 9, "5:"},
        {"MULLER an", 0, 9, "1: anna Müller"},
        {"BO", 0, 9, "1: Bø"},
        {"oscar", 0, 9, "1: Óscar Wirth"},
        {"ZURICH", 0, 9, "1: "},
        {"tours.example", 0, 9, "1: "},
        {"44 123", 0, 9, "2: Anna Zett Óscar Wirth"},
        {"44123x", 0, 9, "0:"},
        {"\xFF", 0, 9, "0:"},
    };
    for (const auto& [text, offset, limit, names] : cases) {
        EXPECT_EQ(namesOf({text, offset, limit}), names) << text;
    }
}

TEST_F(Contacts, ListenersHearOfEachChangeOnce) {
    std::string events;
    orvane::notification::Listeners listeners;
    listeners.add<ContactsChangedEvent>(*service, [&](const ContactsChangedEvent& event) {
        for (const auto& [kind, ids] :
             {std::pair{"+", event.added}, {"~", event.changed}, {"-", event.removed}}) {
            for (const std::string& id : ids) {
                events += kind + id + " ";
            }
        }
    });
    open({person("1", "Anna")});
    EXPECT_EQ(events, "");
    std::string created;
    service->create(person("ignored", "Bo"), [&](const Contact& contact) { created = contact.id; });
    run();
    book->answer();
    EXPECT_EQ(created, "new");
    book->observer.stored({person("new", "Bo"), person("1", "Anne")});
    service->remove("1");
    run();
    book->answer();
    book->observer.stored({person("1", "Anne")});  // late
    book->observer.removed({"1"});
    EXPECT_EQ(events, "+new ~1 -1 ");
    EXPECT_EQ(namesOf({}), "1: Bo");
}

TEST_F(Contacts, ACallEndsOnceWithItsResultOrItsReason) {
    open({person("1", "Anna")});
    std::vector<std::string> results;
    const auto note = [&](const std::string& result) { results.push_back(result); };
    service->read(
        "1", [&](const Contact& contact) { note(contact.name); }, noteFailure());
    service->readPhoto("1", note, noteFailure());
    service->storePhoto(
        "1", "", [&] { note("stored"); }, noteFailure());
    run();
    book->answer();
    EXPECT_EQ(results, (std::vector<std::string>{"Anna", "photo of 1", "stored"}));
    EXPECT_TRUE(failures.empty());

    service->read("2", {}, noteFailure());
    service->change(person("", "Bo"), {}, noteFailure());
    run();
    service->change(person("1", "Bo"), {}, noteFailure());
    run();
    book->answer(ServiceFailure{Reason::Denied, "no"});
    const auto late = service->remove(
        "1", [&] { note("late"); }, noteFailure());
    const auto cancelled = service->remove(
        "1", [&] { note("cancelled"); }, noteFailure());
    run();
    cancelled->cancel();
    clock.advanceBy(31);
    EXPECT_FALSE(late->isPending() || cancelled->isPending());
    book->answer();
    EXPECT_EQ(results.size(), 3U);
    EXPECT_EQ(failures,
              (std::vector{Reason::Failed, Reason::Failed, Reason::Denied, Reason::TimedOut}));
}

TEST_F(Contacts, ABookThatDoesNotAnswerIsEmptyAfterAWhile) {
    std::size_t total = 9;
    service->find({}, [&](const ContactsPage& page) { total = page.total; });
    run();
    EXPECT_EQ(total, 9U);
    clock.advanceBy(11);
    EXPECT_EQ(total, 0U);
    // A call that waits for the address book may not outlive the service.
    service->find({}, [&](const ContactsPage&) { total = 1; });
    service.reset();
    run();
    EXPECT_EQ(total, 0U);
}

TEST_F(Contacts, WithoutTheLibraryTheBookIsEmpty) {
    service = ContactsService::instance();
    testing::internal::CaptureStderr();
    EXPECT_EQ(namesOf({}), "0:");
    EXPECT_EQ(namesOf({}), "0:");
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(log.find("There are no contacts"), log.rfind("There are no contacts"));
    EXPECT_NE(log.find("liborvane-contacts.so"), std::string::npos) << log;
    service->create(person("", "Bo"), {}, noteFailure());
    run();
    EXPECT_EQ(failures, std::vector{Reason::Unavailable});
    ContactsService::reset();
}

// Last: what a host denies is denied for the rest of the process.
TEST_F(Contacts, AHostThatDeniesThemKeepsTheBookClosed) {
    denyFamily(*familyNamed("contacts"));
    service->find({}, {}, noteFailure());
    run();
    EXPECT_EQ(failures, std::vector{Reason::Denied});
    EXPECT_FALSE(book->observer.ready);
}
