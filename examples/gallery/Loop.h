#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Cards.h"

namespace gallery {

// Repeats an animation while its page is on the display.
class Loop : public std::enable_shared_from_this<Loop> {
public:
    // Creates the animation of one pass, with a key, for a page of a scale.
    using Make = std::function<std::shared_ptr<orvane::display::animation::Animation>(
        const std::string& key, float scale)>;

    Loop(Container page, Make make);
    // Has no effect while the loop runs, and while the user wants no motion. The loop ends when the
    // page has left the display.
    void start();

private:
    void runOnce();

    Container page_;
    Make make_;
    bool isRunning_ = false;
    bool isOddPass_ = false;
};

}  // namespace gallery
