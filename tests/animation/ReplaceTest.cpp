#include "orvane/display/animation/Transition.h"
#include "tests/animation/SceneFixture.h"

namespace orvane::display::animation {

namespace {

constexpr std::uint32_t red = 0xFFFF0000;
constexpr std::uint32_t blue = 0xFF0000FF;
constexpr std::uint32_t black = 0xFF000000;

using Objects = std::vector<std::shared_ptr<DisplayObject>>;

}  // namespace

class ReplaceTest : public SceneTest {
protected:
    ReplaceTest() {
        display_->add(old_);
        window_.display();
    }

    void replace(int type, double duration = 1) {
        const Transition transition{type, duration};
        display_->replace(old_, new_, &transition);
    }

    // Of the left half of the window and of the right.
    bool shows(std::uint32_t left, std::uint32_t right) const {
        return isColor(50, 50, left) && isColor(150, 50, right);
    }

    std::shared_ptr<Display> display_ = Display::instance();
    std::shared_ptr<CountedRect> old_ = makeRect(0, 0, 200, 100, red);
    std::shared_ptr<CountedRect> new_ = makeRect(0, 0, 200, 100, blue);
};

TEST_F(ReplaceTest, EachTransitionShowsBothUntilItEnds) {
    struct Case {
        int type;
        std::uint32_t left, right;  // what is shown half-way
    };
    // A fade of two opaque colours stays opaque.
    for (const auto& [type, left, right] : {Case{Transition::PushFromRight, red, blue},
                                            {Transition::PushFromLeft, blue, red},
                                            {Transition::Fade, 0xFF800080, 0xFF800080},
                                            {-5, 0xFF800080, 0xFF800080}}) {
        SCOPED_TRACE(type);
        display_->removeAll();
        display_->add(old_);
        window_.display();
        replace(type);
        refresh(0);
        EXPECT_TRUE(shows(red, red));
        refresh(0.5);
        EXPECT_TRUE(shows(left, right)) << std::hex << pixel(50, 50);
        EXPECT_EQ(display_->getObjects(), (Objects{old_, new_}));
        refresh(0.5);
        EXPECT_TRUE(shows(blue, blue));
        EXPECT_EQ(display_->getObjects(), Objects{new_});
        EXPECT_EQ(old_->getLayer()->getDisplay(), nullptr);
        EXPECT_FALSE(window_.needsDisplay());
    }
}

TEST_F(ReplaceTest, IsAtOnceWithoutATransitionOrWithoutBothViews) {
    const Transition transition{Transition::PushFromRight, 1};
    display_->replace(old_, new_, nullptr);
    EXPECT_EQ(display_->getObjects(), Objects{new_});
    display_->replace(nullptr, old_, nullptr);
    EXPECT_EQ(display_->getObjects(), (Objects{new_, old_}));
    display_->removeAll();

    display_->replace(nullptr, new_, &transition);
    refresh(0);
    EXPECT_TRUE(shows(blue, blue));
    EXPECT_EQ(display_->getObjects(), Objects{new_});

    const auto unseen = makeRect(0, 0, 10, 10, red);  // has no layer
    display_->replace(unseen, old_, &transition);
    refresh(0);
    EXPECT_TRUE(shows(red, red));

    display_->replace(old_, nullptr, &transition);
    refresh(0);
    EXPECT_EQ(display_->getObjects(), Objects{new_});
}

TEST_F(ReplaceTest, ADurationOfNothingEndsAtTheNextPass) {
    for (const double duration : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
        display_->removeAll();
        display_->add(old_);
        replace(Transition::Fade, duration);
        refresh(0);
        refresh(0);
        EXPECT_EQ(display_->getObjects(), Objects{new_});
        EXPECT_TRUE(shows(blue, blue));
    }
}

TEST_F(ReplaceTest, TransitionsFollowOneAnother) {
    const auto third = makeRect(0, 0, 200, 100, 0xFF00FF00);
    const Transition transition{Transition::PushFromRight, 1};
    display_->replace(old_, new_, &transition);
    refresh(0.5);
    display_->replace(new_, third, &transition);
    refresh(0.5);
    EXPECT_EQ(display_->getObjects(), (Objects{new_, third}));
    EXPECT_TRUE(isColor(150, 50, 0xFF00FF00));
    refresh(0.5);
    EXPECT_EQ(display_->getObjects(), Objects{third});
    EXPECT_TRUE(shows(0xFF00FF00, 0xFF00FF00));
}

TEST_F(ReplaceTest, AnObjectThatComesBackBeforeItHasGoneStillGoes) {
    replace(Transition::PushFromRight);
    refresh(0.25);
    const Transition transition{Transition::PushFromLeft, 1};
    display_->replace(new_, old_, &transition);
    refresh(0.75);
    EXPECT_EQ(old_->getLayer()->getDisplay(), nullptr);
    refresh(0);
    EXPECT_EQ(new_->getLayer()->getDisplay(), nullptr);
    EXPECT_TRUE(display_->getObjects().empty());
    EXPECT_TRUE(shows(black, black));
    EXPECT_FALSE(window_.needsDisplay());
}

TEST_F(ReplaceTest, EitherSideMayGoDuringTheTransition) {
    replace(Transition::PushFromLeft);
    refresh(0.5);
    display_->remove(new_);
    refresh(0);
    refresh(0);
    EXPECT_TRUE(display_->getObjects().empty()) << "the old one goes with the transition";
    EXPECT_TRUE(shows(black, black));

    display_->add(old_);
    replace(Transition::Fade);
    refresh(0.5);
    display_->remove(old_);
    refresh(0.25);
    refresh(0.25);
    refresh(0);
    EXPECT_EQ(display_->getObjects(), Objects{new_});
    EXPECT_TRUE(shows(blue, blue));
}

TEST_F(ReplaceTest, TheDisplayLivesUntilTheTransitionIsOver) {
    const std::weak_ptr<Display> display = display_;
    replace(Transition::Fade);
    refresh(0.5);
    Display::reset();
    display_.reset();
    EXPECT_FALSE(display.expired());
    refresh(0.5);
    refresh(0);
    const std::shared_ptr<Display> alive = display.lock();
    EXPECT_TRUE(!alive || alive->getObjects() == Objects{new_});
    if (alive) {
        alive->removeAll();
    }
}

}  // namespace orvane::display::animation
