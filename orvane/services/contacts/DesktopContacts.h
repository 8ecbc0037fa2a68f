#pragma once

#include <libebook/libebook.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "orvane/services/ContactsProvider.h"

namespace orvane::services {

// The address books of evolution-data-server that are enabled. Each of them is watched by a view,
// which first passes all contacts. The calls of the service wait on background threads, one at a
// time. The id of a contact is that of its book, a slash, and that of the contact in its book.
class DesktopContacts : public ContactsProvider {
public:
    DesktopContacts();
    ~DesktopContacts() override;
    DesktopContacts(const DesktopContacts&) = delete;
    DesktopContacts& operator=(const DesktopContacts&) = delete;

    void open(Observer observer) override;
    void store(Contact contact, Stored done) override;
    void remove(const std::string& id, std::function<void(const Outcome& outcome)> done) override;
    void readPhoto(
        const std::string& id,
        std::function<void(const std::string& bytes, const Outcome& outcome)> done) override;
    void storePhoto(const std::string& id, const std::string& bytes, Stored done) override;

private:
    class Books;
    struct Watcher;
    // What a change results in.
    struct Change {
        Contact contact = {};
        Outcome outcome = {};
    };

    template <typename Work, typename Done>
    void perform(Work work, Done done);
    void opened(std::size_t views, const Outcome& outcome);
    void viewIsComplete();
    void cardsStored(const std::string& book, const GSList* cards);

    const std::shared_ptr<Books> books_;
    Observer observer_;
    std::size_t completeViews_ = 0;
    std::size_t views_ = 0;
    bool isOpen_ = false;
    // What background threads and views report after the destructor finds this expired.
    const std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace orvane::services
