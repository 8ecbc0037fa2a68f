#include <functional>

#include "orvane/display/animation/GroupAnimation.h"
#include "tests/animation/SceneFixture.h"

namespace orvane::display::animation {

namespace {

constexpr std::uint32_t red = 0xFFFF0000;

}  // namespace

using LifetimeTest = SceneTest;

TEST_F(LifetimeTest, AnAnimatedLayerIsNeverPaintedAnew) {
    const auto root = DisplayFactory::createContainer();
    const auto back = makeRect(0, 0, 200, 100, 0xFF00FF00);
    const auto mover = makeRect(10, 10, 20, 20, red);
    root->add(back);
    root->add(mover);
    Display::instance()->add(root);
    const std::shared_ptr<DisplayLayer> layer = mover->extractAnimationLayer();
    window_.display();
    const int backPaints = back->paints;
    const int moverPaints = mover->paints;
    ASSERT_GT(moverPaints, 0);
    EXPECT_TRUE(isColor(20, 20, red));

    struct Case {
        AttributeName attribute;
        std::vector<float> values;
    };
    for (const auto& [attribute, values] : {Case{AttributeName::TranslationX, {0, 150}},
                                            {AttributeName::TranslationY, {0, 60}},
                                            {AttributeName::Opacity, {1, 0}},
                                            {AttributeName::Translation, {0, 0, 150, 60}},
                                            {AttributeName::Rotation, {0, 7}},
                                            {AttributeName::Affine,
                                             {1, 0, 0, 1, 0, 0,  //
                                              3, 0, 0, 3, 0, 0}}}) {
        const std::uint32_t before = pixel(20, 20);
        const auto animation = makeAnimation(mover, attribute, values);
        animation->run();
        bool moved = false;
        for (int frame = 0; frame < 60; ++frame) {
            refresh(1.0 / 60);
            moved |= pixel(20, 20) != before || isColor(35, 35, red);
        }
        EXPECT_TRUE(moved) << getKeyPath(attribute);
        refresh(0.1);
        EXPECT_EQ(pixel(20, 20), before) << getKeyPath(attribute);
        EXPECT_FALSE(window_.needsDisplay());
    }
    EXPECT_EQ(completions_, 6);
    EXPECT_EQ(mover->paints, moverPaints);
    EXPECT_EQ(back->paints, backPaints);
}

// Whatever goes while an endless animation runs takes the animation with it: one completion, the
// description let go, no frames asked for any more.
TEST_F(LifetimeTest, WhatIsTakenAwayEndsTheAnimation) {
    struct Scene {
        platform::OffscreenWindow& window;
        std::shared_ptr<graphics::Container> root;
        std::shared_ptr<graphics::Container> inner;
        std::shared_ptr<CountedRect> rect;
    };
    struct Case {
        const char* what;
        std::function<void(Scene&)> takeAway;
    };
    const Case cases[] = {
        {"the animated object", [](Scene& s) { s.inner->erase(s.inner->find(s.rect)); }},
        {"an ancestor", [](Scene& s) { s.root->erase(s.root->find(s.inner)); }},
        {"the top-level object", [](Scene& s) { Display::instance()->remove(s.root); }},
        {"everything", [](Scene&) { Display::instance()->removeAll(); }},
        {"the animation", [](Scene& s) { s.rect->getLayer()->removeAnimation("key"); }},
        {"the layer",
         [](Scene& s) {
             s.rect->getLayer()->removeFromParent();
             s.rect->removeFromLayer();
         }},
        {"the display's view", [](Scene& s) { s.window.setContentView(nullptr); }},
        {"the display",
         [](Scene& s) {
             s.window.setContentView(nullptr);
             Display::instance()->removeAll();
             Display::reset();
         }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Display::reset();
        showInWindow(*Display::instance());
        completions_ = 0;
        std::weak_ptr<ValueAnimation> animation;
        std::weak_ptr<CountedRect> object;
        {
            Scene scene{window_, DisplayFactory::createContainer(),
                        DisplayFactory::createContainer(), makeRect(10, 10, 20, 20, red)};
            scene.inner->add(scene.rect);
            scene.root->add(scene.inner);
            Display::instance()->add(scene.root);
            const auto endless = makeAnimation(scene.rect, AttributeName::Rotation, {0, 1});
            endless->setRepeatCount(-1);
            endless->setAnchorPointX(0.5F);
            endless->run();
            animation = endless;
            object = scene.rect;
            refresh(0.25);
            refresh(1.25);
            EXPECT_EQ(completions_, 0);
            EXPECT_TRUE(window_.isAnimating());
            c.takeAway(scene);
        }
        refresh(0.25);
        refresh(0.25);
        EXPECT_EQ(completions_, 1);
        EXPECT_TRUE(animation.expired());
        EXPECT_FALSE(window_.needsDisplay());
        Display::instance()->removeAll();
        EXPECT_TRUE(object.expired());
    }
}

TEST_F(LifetimeTest, AWindowThatGoesEndsWhatItShows) {
    window_.setContentView(nullptr);
    auto window = std::make_unique<platform::OffscreenWindow>(platform::CGSize{50, 50});
    window->setContentView(Display::instance()->getView());
    const auto rect = makeRect(0, 0, 10, 10, red);
    Display::instance()->add(rect);
    const auto endless = makeAnimation(rect, AttributeName::Opacity, {1, 0});
    endless->setRepeatCount(-1);
    endless->run();
    window->display();
    window.reset();
    clock_.advanceBy(0);
    EXPECT_EQ(completions_, 1);
}

TEST_F(LifetimeTest, ACallbackMayTakeEverythingAway) {
    const auto root = DisplayFactory::createContainer();
    std::vector<std::weak_ptr<Animation>> animations;
    Display::instance()->add(root);
    for (int i = 0; i < 20; ++i) {
        const auto rect = makeRect(static_cast<float>(i * 10), 0, 8, 8, red);
        root->add(rect);
        const auto animation = makeAnimation(rect, AttributeName::TranslationY, {0, 50});
        const auto group = std::make_shared<GroupAnimation>("group");
        group->setAnimatable(animation->getAnimatable());
        group->add(animation);
        group->setCompletionCallback([this] { ++completions_; });
        animation->setRepeatCount(i % 3 == 0 ? -1 : 1);
        if (i == 7) {
            animation->setCompletionCallback([this] {
                ++completions_;
                Display::instance()->removeAll();
                Display::reset();
            });
        }
        group->run();
        animations.insert(animations.end(), {animation, group});
    }
    for (int i = 0; i < 6; ++i) {
        refresh(0.5);
    }
    EXPECT_EQ(completions_, 40);
    for (const std::weak_ptr<Animation>& animation : animations) {
        EXPECT_TRUE(animation.expired());
    }
}

}  // namespace orvane::display::animation
