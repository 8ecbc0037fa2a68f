#pragma once

#include "Cards.h"

namespace gallery {

// The page of scrolling: a list of 100,000 contacts whose rows are made when they come into view, a
// carousel that comes to rest at whole pages, and scroll containers in a scroll container.
class ScrollPage {
public:
    ScrollPage();

    const Container& root() const { return page_.root(); }
    static void drawIcon(ContainerObject& inside);

private:
    // A white panel with a title; returns the container for what is below the title.
    Container addPanel(const std::string& title, float x, float y, float width, float height);
    void addContacts();
    void addCarousel();
    void addShelves();

    Page page_;
};

}  // namespace gallery
