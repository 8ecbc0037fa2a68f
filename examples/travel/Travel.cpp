#include <orvane/orvane.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <utility>

#include "MapCard.h"
#include "PhotoCard.h"
#include "PlacePage.h"
#include "look.h"

// A map, where the user is, and whom the user knows. Nothing is read before the user presses the
// button or types a name.
namespace travel {

using namespace orvane::display;
using namespace orvane::display::layout;
using namespace orvane::services;
using BoxPointer = std::shared_ptr<Box>;

namespace {

constexpr double kRow = 52;
constexpr std::size_t kMostRows = 500;

std::string describe(const Position& position) {
    std::array<char, 120> text{};
    std::snprintf(text.data(), text.size(), "%.4f° %c, %.4f° %c, within %.0f m",
                  std::abs(position.latitude), position.latitude < 0 ? 'S' : 'N',
                  std::abs(position.longitude), position.longitude < 0 ? 'W' : 'E',
                  position.accuracy);
    return text.data();
}

class Travel {
public:
    void main() {
        const auto page = std::make_shared<Box>();
        page->setBackground(makeBack(kPaper, 0));
        page->add(makeColumn(), {.width = 420});
        page->add(map_.object(), {.width = 0, .grow = 1});
        page->showOnDisplay();
        listeners_.add<ContactsChangedEvent>(*contacts_, [this](const auto&) { search(); });
    }

private:
    BoxPointer makeColumn() {
        column_->add(makeText("Travel", 26, kInk));
        column_->add(makePlace());
        column_->add(makeSearch(), {.height = 40});
        column_->add(count_);
        rows_->setRowHeight(kRow);
        rows_->setRowFunction([this](std::size_t row, const auto&) { return makeRow(row); });
        column_->add(rows_, {.height = 0, .grow = 1});
        column_->add(photo_.box());
        return column_;
    }

    // The position, and the button that asks for it.
    BoxPointer makePlace() {
        const auto card = std::make_shared<Box>(
            BoxStyle{.gap = 16, .padding = Insets::all(14), .align = Align::Center});
        card->setBackground(makeBack(kCard, 12));
        const auto button = makeButton("Where am I?", listeners_, [this] { locate(); });
        card->add(button, {.width = 130, .height = 36});
        card->add(place_, {.width = 0, .grow = 1});
        return card;
    }

    BoxPointer makeSearch() {
        const auto frame =
            std::make_shared<Box>(BoxStyle{.padding = Insets::all(8), .align = Align::Stretch});
        frame->setBackground(makeBack(kCard, 10));
        search_->setFont("DejaVu Sans");
        search_->setTextSize(15);
        search_->setTextColor(kInk);
        search_->setPlaceholder("A name or a number");
        listeners_.add<graphics::InputText::ChangeEvent>(*search_,
                                                         [this](const auto&) { search(); });
        frame->add(search_, {.width = 0, .grow = 1});
        return frame;
    }

    void locate() {
        place_->setContent("Asking the location service ...");
        location_.start(
            {.accuracy = PositionAccuracy::Street, .distance = 50},
            [this](const Position& position) {
                place_->setContent(describe(position));
                map_.showPosition(position);
                showAbout(position);
            },
            [this](const ServiceFailure& failure) {
                place_->setContent(describeFailure(failure));
            });
    }

    // The first position makes room for the page about it.
    void showAbout(const Position& position) {
        about_.showPosition(position);
        if (!std::exchange(isAboutShown_, true)) {
            column_->add(about_.object(), {.height = 124, .place = [this](const auto& rect) {
                                               about_.place(rect);
                                           }});
            column_->update();
        }
    }

    // A search that is typed over is cancelled.
    void search() {
        if (call_) {
            call_->cancel();
        }
        call_ = contacts_->find(
            {.text = search_->getContent(), .limit = kMostRows},
            [this](const ContactsPage& page) {
                found_ = page.contacts;
                count_->setContent(std::to_string(page.total) + " contacts");
                rows_->setRowCount(found_.size());
                map_.showContacts(found_);
            },
            [this](const ServiceFailure& failure) {
                count_->setContent(describeFailure(failure));
            });
    }

    std::shared_ptr<DisplayObject> makeRow(std::size_t row) const {
        const Contact& contact = found_[row];
        auto object = DisplayFactory::createContainer();
        const auto name = makeText(contact.name, 15, kInk);
        name->setY(20);
        object->add(name);
        std::string details = contact.organization;
        for (const auto& entries : {contact.numbers, contact.mails}) {
            for (const Contact::Entry& entry : entries) {
                details += (details.empty() ? "" : "   ") + entry.value;
            }
        }
        const auto second = makeText(details, 12, kCaption);
        second->setY(38);
        object->add(second);
        return object;
    }

    BoxPointer column_ = std::make_shared<Box>(
        BoxStyle{.direction = Direction::Column, .gap = 14, .padding = Insets::all(24)});
    MapCard map_;
    PhotoCard photo_;
    PlacePage about_;
    bool isAboutShown_ = false;
    std::shared_ptr<graphics::Text> place_ = makeText("Not known yet", 14, kInk, true);
    std::shared_ptr<graphics::Text> count_ = makeText("Type to search", 12, kCaption);
    std::shared_ptr<graphics::InputText> search_ = DisplayFactory::createInputText(false, false, 0);
    std::shared_ptr<graphics::ListContainer> rows_ = DisplayFactory::createListContainer();
    std::vector<Contact> found_;
    std::shared_ptr<ContactsService> contacts_ = ContactsService::instance();
    ContactsService::Call call_;
    GeolocationService location_;
    orvane::notification::Listeners listeners_;
};

}  // namespace

}  // namespace travel

ORVANE_MAIN_CLASS(travel::Travel)
