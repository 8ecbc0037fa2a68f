#pragma once

#include <orvane/orvane.h>

#include <memory>
#include <string>

namespace travel {

// A page about the place where the user is: what the position means, and links to pages that know
// more. The links are followed in the page; only a press on "Copy" reaches the application.
class PlacePage {
public:
    PlacePage();

    // What belongs onto the page.
    const std::shared_ptr<orvane::display::graphics::ClipContainer>& object() const {
        return frame_;
    }
    // Places it, in the coordinates of its parent.
    void place(const orvane::display::geometry::Rect<double>& rect);
    // Shows the page about a position.
    void showPosition(const orvane::services::Position& position);

private:
    std::shared_ptr<orvane::display::graphics::ClipContainer> frame_ =
        orvane::display::DisplayFactory::createRoundedClipContainer(12);
    std::shared_ptr<orvane::display::native::NWebView> page_ =
        orvane::display::DisplayFactory::createWebView();
};

}  // namespace travel
