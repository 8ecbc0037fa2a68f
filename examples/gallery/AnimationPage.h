#pragma once

#include <memory>
#include <vector>

#include "Cards.h"
#include "Loop.h"
#include "Navigation.h"

namespace gallery {

// The page of animations: a card for each attribute of a layer, for groups, for frame animations
// and for transitions between pages. The animations run while the page is on the display.
class AnimationPage {
public:
    // Shares the navigation, which the cards of the transitions use.
    explicit AnimationPage(const std::shared_ptr<Navigation>& navigation);

    const Container& root() const { return page_.root(); }
    // Call this after the page has been added to the display.
    void start();
    static void drawIcon(ContainerObject& inside);

private:
    using AttributeName = orvane::display::animation::AttributeName;

    // A card that animates one layer. The key frames are those of an unscaled page.
    struct Motion {
        std::shared_ptr<DisplayObject> object;
        AttributeName attribute;
        std::vector<float> values;
        float duration;  // seconds
    };

    void addCard(const std::string& title, const Page::Draw& draw) { page_.addCard(title, draw); }
    void addLoop(Loop::Make make);
    void addMotion(const Motion& motion);

    void drawTranslations();
    void drawOpacity();
    void drawTurning();
    void drawClip();
    void drawGroup();
    void drawFrames();
    void drawTransitions();

    std::shared_ptr<Navigation> navigation_;
    Page page_;
    std::vector<std::shared_ptr<Loop>> loops_;
    std::vector<std::shared_ptr<orvane::display::events::TouchEventListener>> taps_;
};

}  // namespace gallery
