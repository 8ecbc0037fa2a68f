#pragma once

#include <array>
#include <memory>

#include "bench/list/Rows.h"
#include "orvane/orvane.h"

namespace bench {

// Our list of the rows, as an application writes it.
inline std::shared_ptr<orvane::display::graphics::ListContainer> makeList(double width,
                                                                          double height) {
    using namespace orvane::display;
    struct Row {
        std::shared_ptr<graphics::Rect> card = DisplayFactory::createRect();
        std::shared_ptr<graphics::Text> title = DisplayFactory::createText(false);
        std::shared_ptr<graphics::Text> subtitle = DisplayFactory::createText(false);
        std::shared_ptr<graphics::Image> picture = DisplayFactory::createImage();
    };
    static std::array<std::string, kPictures> pictures;
    for (int i = 0; i < kPictures; ++i) {
        pictures[static_cast<std::size_t>(i)] = picturePixels(i);
    }
    const auto list = DisplayFactory::createListContainer();
    list->setBounds({0, 0, width, height});
    list->setRowHeight(kRowHeight);
    list->setRowFunction([width](std::size_t number, const std::shared_ptr<DisplayObject>& used) {
        const int index = static_cast<int>(number);
        auto row = std::dynamic_pointer_cast<graphics::Container>(used);
        if (!row) {
            row = DisplayFactory::createContainer();
            const Row parts;
            parts.card->set(0, 0, static_cast<float>(width), kRowHeight);
            parts.title->setFont("DejaVuSans");
            parts.title->setTextSize(15);
            parts.title->setTranslate(72, 27);
            parts.title->setFillColor(0xFF202020U);
            parts.subtitle->setFont("DejaVuSans");
            parts.subtitle->setTextSize(12);
            parts.subtitle->setTranslate(72, 47);
            parts.subtitle->setFillColor(0xFF707070U);
            parts.picture->setTranslate(12, 8);
            row->add(parts.card);
            row->add(parts.title);
            row->add(parts.subtitle);
            row->add(parts.picture);
        }
        const auto& parts = row->getChildren();
        std::dynamic_pointer_cast<graphics::Rect>(parts[0])->setFillColor(cardColor(index));
        std::dynamic_pointer_cast<graphics::Text>(parts[1])->setContent(title(index));
        std::dynamic_pointer_cast<graphics::Text>(parts[2])->setContent(subtitle(index));
        std::dynamic_pointer_cast<graphics::Image>(parts[3])->setRawData(
            pictures[number % kPictures], kPictureSide, kPictureSide);
        return row;
    });
    list->setRowCount(kRows);
    return list;
}

}  // namespace bench
