#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Cards.h"

namespace gallery {

// The pages of the gallery, of which the display shows one, and the rail at their left edge with a
// button for each page.
class Navigation : public std::enable_shared_from_this<Navigation> {
public:
    using Type = orvane::display::animation::Transition::Type;

    // `name` is what assistive technology says. `drawIcon` draws into 24 x 24 points; `shown` is
    // called each time after the page has been added to the display, and when the user wants
    // motion, or no longer. Add all pages before start().
    void addPage(const std::string& name, const Container& root,
                 const std::function<void(ContainerObject&)>& drawIcon,
                 const std::function<void()>& shown = {});
    // Draws the rails and shows the first page.
    void start();

    // Changes to a page: at once if the user wants no motion. Has no effect during another change.
    void show(std::size_t page, Type transition);
    void showNext(Type transition) { show((current_ + 1) % pages_.size(), transition); }

private:
    struct Entry {
        std::string name;
        Container root;
        std::function<void(ContainerObject&)> drawIcon;
        std::function<void()> shown;
    };

    void drawRail(std::size_t page);
    void followMotion();

    std::vector<Entry> pages_;
    std::vector<std::shared_ptr<orvane::display::events::TouchEventListener>> buttons_;
    std::size_t current_ = 0;
    bool isStill_ = false;  // the user wants no motion
};

}  // namespace gallery
