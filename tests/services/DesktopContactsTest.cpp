#include <gtest/gtest.h>
#include <libebook/libebook.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

#include "orvane/notification/Listeners.h"
#include "orvane/services/ContactsService.h"
#include "tests/support/waitFor.h"

// The desktop's address book, in a session of its own (with-session).
namespace {

using namespace orvane::services;
using orvane::tests::waitFor;

void logFailure(const ServiceFailure& failure) {
    ADD_FAILURE() << failure.message;
}

// Another program that uses the address book.
class OtherProgram {
public:
    OtherProgram() {
        ESourceRegistry* const registry = e_source_registry_new_sync(nullptr, nullptr);
        ESource* const source = e_source_registry_ref_default_address_book(registry);
        client_ = E_BOOK_CLIENT(
            e_book_client_connect_sync(source, static_cast<guint32>(-1), nullptr, nullptr));
        g_object_unref(source);
        g_object_unref(registry);
    }
    ~OtherProgram() { g_object_unref(client_); }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    void add(const std::string& card) {
        EContact* const contact = e_contact_new_from_vcard(card.c_str());
        EXPECT_TRUE(e_book_client_add_contact_sync(client_, contact, E_BOOK_OPERATION_FLAG_NONE,
                                                   nullptr, nullptr, nullptr));
        g_object_unref(contact);
    }
    // The card with an id of ContactsService.
    std::string card(const std::string& id) {
        EContact* contact = nullptr;
        if (e_book_client_get_contact_sync(client_, id.substr(id.find('/') + 1).c_str(), &contact,
                                           nullptr, nullptr) == FALSE) {
            return {};
        }
        char* const text = e_vcard_to_string(E_VCARD(contact), EVC_FORMAT_VCARD_30);
        std::string card = text;
        g_free(text);
        g_object_unref(contact);
        return card;
    }

private:
    EBookClient* client_ = nullptr;
};

class DesktopContacts : public testing::Test {
protected:
    ContactsPage find(const ContactsQuery& query) {
        std::optional<ContactsPage> result;
        service->find(
            query, [&](const ContactsPage& page) { result = page; }, &logFailure);
        waitFor([&] { return result.has_value(); });
        return result.value_or(ContactsPage{});
    }
    Contact store(const Contact& contact) {
        std::optional<Contact> result;
        const auto done = [&](const Contact& stored) { result = stored; };
        contact.id.empty() ? service->create(contact, done, &logFailure)
                           : service->change(contact, done, &logFailure);
        waitFor([&] { return result.has_value(); });
        return result.value_or(Contact{});
    }
    void storePhoto(const std::string& id, const std::string& bytes) {
        bool isDone = false;
        service->storePhoto(
            id, bytes, [&] { isDone = true; }, &logFailure);
        waitFor([&] { return isDone; });
    }
    std::string readPhoto(const std::string& id) {
        std::optional<std::string> result;
        service->readPhoto(
            id, [&](const std::string& bytes) { result = bytes; }, &logFailure);
        waitFor([&] { return result.has_value(); });
        return result.value_or("");
    }

    std::shared_ptr<ContactsService> service = std::make_shared<ContactsService>(nullptr);
};

}  // namespace

TEST_F(DesktopContacts, WithoutABusTheBookIsEmpty) {
    const std::string bus = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/no/such/bus", 1);
    testing::internal::CaptureStderr();
    EXPECT_EQ(find({}).total, 0U);
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_NE(log.find("There are no contacts: "), std::string::npos) << log;
    std::optional<ServiceFailure> failure;
    service->create({}, {}, [&](const ServiceFailure& reason) { failure = reason; });
    waitFor([&] { return failure.has_value(); });
    setenv("DBUS_SESSION_BUS_ADDRESS", bus.c_str(), 1);
}

TEST_F(DesktopContacts, AreStoredChangedAndRemoved) {
    EXPECT_EQ(find({}).total, 0U);
    Contact contact;
    contact.name = "Jürg Müller";
    contact.organization = "Tours";
    contact.numbers = {{"cell", "+41 79 123 45 67"}, {"work", "044 1"}};
    contact.mails = {{"home", "jm@example.org"}};
    contact.note = "two\nlines; and, signs";
    const Contact created = store(contact);
    contact.id = created.id;
    contact.givenName = "Jürg";  // the address book takes names apart
    contact.familyName = "Müller";
    EXPECT_EQ(created, contact);
    EXPECT_EQ(find({.text = "muller"}).contacts, std::vector{contact});
    EXPECT_EQ(find({.text = "079123"}).total, 0U);
    EXPECT_EQ(find({.text = "79123"}).total, 1U);

    const std::string png = std::string("\x89PNG\r\n") + '\0' + "bytes";
    storePhoto(created.id, png);
    EXPECT_EQ(readPhoto(created.id), png);
    contact.note.clear();
    contact.hasPhoto = true;
    EXPECT_EQ(store(contact), contact);
    storePhoto(created.id, "");
    EXPECT_EQ(readPhoto(created.id), "");

    bool isRemoved = false;
    service->remove(
        created.id, [&] { isRemoved = true; }, &logFailure);
    waitFor([&] { return isRemoved; });
    EXPECT_EQ(find({}).total, 0U);
    EXPECT_EQ(OtherProgram().card(created.id), "");
}

TEST_F(DesktopContacts, OfOtherProgramsAreSeenAndKeepWhatIsUnknown) {
    EXPECT_EQ(find({}).total, 0U);
    std::string added;
    orvane::notification::Listeners listeners;
    listeners.add<ContactsChangedEvent>(*service, [&](const ContactsChangedEvent& event) {
        added = event.added.empty() ? added : event.added.front();
    });
    OtherProgram program;
    program.add(
        "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Anna Zett\r\nN:Zett;Anna;;;\r\nTITLE:Guide\r\n"
        "TEL;TYPE=HOME,VOICE,PREF:1\r\nTEL;TYPE=WORK:2\r\nEND:VCARD");
    waitFor([&] { return !added.empty(); });
    Contact contact = find({}).contacts.front();
    EXPECT_EQ(contact.id, added);
    EXPECT_EQ(contact.numbers, (std::vector<Contact::Entry>{{"home", "1"}, {"work", "2"}}));
    contact.numbers.back().value = "3";
    contact.familyName = "Zet";
    store(contact);
    const std::string card = program.card(contact.id);
    for (const char* const part : {"TITLE:Guide", "PREF", "TYPE=WORK:3", "N:Zet;Anna"}) {
        EXPECT_NE(card.find(part), std::string::npos) << part << " in " << card;
    }
}
