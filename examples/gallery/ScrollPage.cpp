#include "ScrollPage.h"

#include <algorithm>
#include <array>
#include <string>

#include "Palette.h"

namespace gallery {

using namespace orvane::display;
using graphics::ScrollContainer;

namespace {

constexpr std::size_t kContacts = 100000;
constexpr float kContactHeight = 60;
constexpr int kPictureSide = 40;
constexpr std::array kColors = {palette::kCoral, palette::kAmber,  palette::kTeal,
                                palette::kBlue,  palette::kViolet, palette::kGreen};
constexpr float kTitleHeight = 44;
constexpr float kMargin = 16;

std::shared_ptr<graphics::Rect> addTile(ContainerObject& inside, float x, float y, float width,
                                        float height, float radius, Color color) {
    const auto tile = DisplayFactory::createRect();
    tile->set(x, y, width, height);
    tile->setRx(radius);
    tile->setRy(radius);
    paint(tile, color);
    inside.add(tile);
    return tile;
}

std::string nameOf(std::size_t contact) {
    constexpr std::array kFirst = {"Ada",  "Bela",  "Chidi", "Dora", "Emil", "Farah", "Goran",
                                   "Hana", "Ines",  "Jonas", "Kira", "Luca", "Mira",  "Nadia",
                                   "Omar", "Petra", "Quinn", "Rosa", "Sami"};
    constexpr std::array kLast = {"Adler",  "Brandt", "Costa",  "Dietz",  "Egger", "Fontana",
                                  "Garcia", "Haddad", "Ivanov", "Jansen", "Kaya",  "Lindt",
                                  "Moreau", "Nagy",   "Okafor", "Popov",  "Rossi"};
    return std::string(kFirst[contact % kFirst.size()]) + " " +
           kLast[contact / kFirst.size() % kLast.size()];
}

// A head and shoulders on a disc, red, green, blue, alpha.
std::string portrait(unsigned color) {
    std::string pixels;
    constexpr double kMiddle = kPictureSide / 2.0;
    for (int y = 0; y < kPictureSide; ++y) {
        for (int x = 0; x < kPictureSide; ++x) {
            const double across = x + 0.5 - kMiddle;
            const double down = y + 0.5 - kMiddle;
            const double outside = across * across + down * down - kMiddle * kMiddle;
            const bool head = across * across + (down + 5) * (down + 5) < 49;
            const bool shoulders = across * across + (down - 18) * (down - 18) < 196;
            const double alpha = std::min(1.0, std::max(0.0, -outside / 30));
            for (const unsigned shift : {16U, 8U, 0U}) {
                const unsigned component = color >> shift & 255U;
                pixels.push_back(
                    static_cast<char>(head || shoulders ? (component + 510) / 3 : component));
            }
            pixels.push_back(static_cast<char>(alpha * 255));
        }
    }
    return pixels;
}

// The parts of a row, in the order in which they are its children.
enum Part : std::size_t { Picture, Name, Address, Line };

Container makeContact(float width) {
    const auto row = DisplayFactory::createContainer();
    const auto picture = DisplayFactory::createImage();
    picture->setTranslate(0, 10);
    row->add(picture);
    addText(*row, 56, 27, "", 14, palette::kInk);
    addText(*row, 56, 46, "", 11, palette::kCaption);
    addTile(*row, 56, kContactHeight - 1, width - 56, 1, 0, palette::kEdge);
    return row;
}

void showContact(graphics::Container& row, std::size_t contact) {
    static const std::array<std::string, kColors.size()> portraits = [] {
        std::array<std::string, kColors.size()> made;
        for (std::size_t i = 0; i < made.size(); ++i) {
            made[i] = portrait(kColors[i]);
        }
        return made;
    }();
    const auto& parts = row.getChildren();
    std::dynamic_pointer_cast<graphics::Image>(parts[Picture])
        ->setRawData(portraits[contact * 7 % portraits.size()], kPictureSide, kPictureSide);
    std::dynamic_pointer_cast<graphics::Text>(parts[Name])->setContent(nameOf(contact));
    std::dynamic_pointer_cast<graphics::Text>(parts[Address])
        ->setContent("contact " + std::to_string(contact + 1) + " of " + std::to_string(kContacts));
}

}  // namespace

ScrollPage::ScrollPage() {
    addContacts();
    addCarousel();
    addShelves();
}

Container ScrollPage::addPanel(const std::string& title, float x, float y, float width,
                               float height) {
    const auto panel = DisplayFactory::createContainer();
    panel->setTranslate(x, y);
    const auto card = addTile(*panel, 0, 0, width, height, 10, palette::kCard);
    paint(card, palette::kCard, palette::kEdge, 1);
    scaleText(addText(*panel, kMargin, 28, title, 13, palette::kCaption), 13, width - 2 * kMargin);
    const auto inside = DisplayFactory::createContainer();
    inside->setTranslate(kMargin, kTitleHeight);
    panel->add(inside);
    page_.root()->add(panel);
    return inside;
}

void ScrollPage::addContacts() {
    constexpr float kWidth = 348;
    const Container panel = addPanel("A list of 100,000 rows", 88, 24, kWidth + 2 * kMargin, 752);
    const auto list = DisplayFactory::createListContainer();
    list->setBounds({0, 0, kWidth, 752 - kTitleHeight - kMargin});
    list->setRowHeight(kContactHeight);
    list->setRowFunction([](std::size_t contact, const std::shared_ptr<DisplayObject>& recycled) {
        auto row = std::dynamic_pointer_cast<graphics::Container>(recycled);
        if (!row) {
            row = makeContact(kWidth);
        }
        showContact(*row, contact);
        return row;
    });
    list->setRowCount(kContacts);
    panel->add(list);
}

void ScrollPage::addCarousel() {
    constexpr float kWidth = 752;
    constexpr float kHeight = 260;
    const Container panel = addPanel("A paged carousel", 484, 24, kWidth + 2 * kMargin,
                                     kHeight + kTitleHeight + kMargin);
    const auto carousel =
        DisplayFactory::createScrollContainer(ScrollContainer::Type::Horizontal, true);
    carousel->setBounds({0, 0, kWidth, kHeight});
    for (std::size_t i = 0; i < kColors.size(); ++i) {
        const auto page = DisplayFactory::createContainer();
        page->setTranslate(kWidth * static_cast<float>(i), 0);
        addTile(*page, 0, 0, kWidth, kHeight, 12, kColors[i]);
        addText(*page, 40, 150, "Page " + std::to_string(i + 1), 64, palette::kWhite);
        carousel->add(page);
    }
    panel->add(carousel);
}

void ScrollPage::addShelves() {
    constexpr float kWidth = 752;
    constexpr float kTop = 24 + 260 + kTitleHeight + kMargin + 24;
    constexpr float kHeight = 776 - kTop - kTitleHeight - kMargin;
    constexpr float kShelf = 150;
    const Container panel = addPanel("Shelves that scroll sideways, in a page that scrolls down",
                                     484, kTop, kWidth + 2 * kMargin, 776 - kTop);
    const auto shelves =
        DisplayFactory::createScrollContainer(ScrollContainer::Type::Vertical, false);
    shelves->setBounds({0, 0, kWidth, kHeight});
    for (int i = 0; i < 8; ++i) {
        const auto shelf = DisplayFactory::createContainer();
        shelf->setTranslate(0, kShelf * static_cast<float>(i));
        addText(*shelf, 0, 20, "Shelf " + std::to_string(i + 1), 13, palette::kInk);
        const auto place = DisplayFactory::createContainer();
        place->setTranslate(0, 32);
        shelf->add(place);
        const auto items =
            DisplayFactory::createScrollContainer(ScrollContainer::Type::Horizontal, false);
        items->setBounds({0, 0, kWidth, 100});
        for (int k = 0; k < 24; ++k) {
            const auto color = kColors[static_cast<std::size_t>(i + k) % kColors.size()];
            addTile(*items, 128 * static_cast<float>(k), 0, 116, 100, 10, color);
            addText(*items, 128 * static_cast<float>(k) + 14, 84,
                    std::to_string(i + 1) + "." + std::to_string(k + 1), 13, palette::kWhite);
        }
        place->add(items);
        shelves->add(shelf);
    }
    panel->add(shelves);
}

void ScrollPage::drawIcon(ContainerObject& inside) {
    for (int i = 0; i < 3; ++i) {
        addTile(inside, 0, 1 + 8 * static_cast<float>(i), 17, 5, 2,
                i == 1 ? palette::kAmber : 0x66FFFFFFU);
    }
    addTile(inside, 20, 4, 3, 12, 1.5F, 0xCCFFFFFFU);
}

}  // namespace gallery
