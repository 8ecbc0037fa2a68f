#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Cards.h"

namespace gallery {

// Runs an animation again and again while its page is on the display.
class Loop : public std::enable_shared_from_this<Loop> {
public:
    // Makes the animation of one pass under a key, for a page scaled by so much.
    using Make = std::function<std::shared_ptr<orvane::display::animation::Animation>(
        const std::string& key, float scale)>;

    Loop(Container page, Make make);
    // Nothing happens while it runs. It ends by itself when the page has left the display.
    void start();

private:
    void runOnce();

    Container page_;
    Make make_;
    bool isRunning_ = false;
    bool isOddPass_ = false;
};

}  // namespace gallery
