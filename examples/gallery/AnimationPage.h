#pragma once

#include <memory>
#include <vector>

#include "Cards.h"
#include "Loop.h"
#include "Navigation.h"

namespace gallery {

// The page of what moves: a card for each attribute of a layer, for groups, frame animations and
// the changes from page to page. It moves while it is on the display.
class AnimationPage {
public:
    // Keeps the navigation that the cards of the transitions use.
    explicit AnimationPage(const std::shared_ptr<Navigation>& navigation);

    const Container& root() const { return page_.root(); }
    // To be called when the page has come onto the display.
    void start();
    static void drawIcon(ContainerObject& inside);

private:
    using AttributeName = orvane::display::animation::AttributeName;

    // A card in which one layer runs through key frames, which are given for an unscaled page.
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
