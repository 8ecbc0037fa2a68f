#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <memory>
#include <numbers>
#include <random>
#include <utility>
#include <vector>

#include "orvane/display/graphics/ConicGradient.h"
#include "orvane/display/graphics/RadialGradient.h"
#include "orvane/display/native/DisplayView.h"
#include "orvane/orvane.h"
#include "platform/offscreen/OffscreenWindow.h"
#include "platform/quartzcore/CAKeyframeAnimation.h"
#include "platform/quartzcore/CAMediaTime.h"
#include "platform/quartzcore/CATransition.h"
#include "tests/gtk/TestWindow.h"

namespace orvane::tests {

namespace {

using platform::CATransform3D;
using platform::CGAffineTransform;
using platform::CGRect;
using platform::CGSize;
using platform::NSView;

constexpr CGSize size{520, 400};

// A tree of views on white.
struct Scene {
    Scene() {
        root->setFrame({{0, 0}, size});
        root->layer()->setBackgroundColor({1, 1, 1, 1});
    }

    std::shared_ptr<NSView> root = std::make_shared<NSView>();
    std::vector<std::shared_ptr<PatternView>> views;
};

// A scene with a series of changes that depends only on the seed.
class ChangingScene : public Scene {
public:
    explicit ChangingScene(unsigned seed) : random_(seed) {
        if (seed % 2 == 0) {  // the background has contents
            root = makePattern({{0, 0}, size}, {0, 0.5, 1, 1});
            root->layer()->setBackgroundColor({1, 1, 1, 1});
        }
        for (unsigned i = 0; i < seed; ++i) {
            add();
        }
    }

    void change() {
        if (views.empty() || (views.size() < 12 && below(6) == 0)) {
            return add();
        }
        const std::size_t index = below(static_cast<unsigned>(views.size()));
        PatternView& view = *views[index];
        switch (below(10)) {
            case 9:
                return clip(view);
            case 0:
                view.removeFromSuperviewWithoutNeedingDisplay();
                views.erase(views.begin() + static_cast<std::ptrdiff_t>(index));
                return;
            case 1:
                return view.setFrame(frame());
            case 2:
                return view.setHidden(!view.isHidden());
            case 3:
                return view.layer()->setOpacity(below(5) / 4.0);
            case 4:
                return view.layer()->setZPosition(below(4));
            case 5:
                return view.layer()->setTransform(CATransform3D::makeAffineTransform(transform()));
            case 6:
                return view.layer()->setAnchorPoint({below(3) / 2.0, below(3) / 2.0});
            case 7:
                return root->layer()->setBackgroundColor({below(5) / 4.0, below(5) / 4.0, 0, 1});
            default:
                view.color = color();
                view.setNeedsDisplayInRect(view.bounds());
        }
    }

private:
    unsigned below(unsigned end) { return static_cast<unsigned>(random_() % end); }

    // Braces evaluate their arguments in order.
    CGRect frame() {
        return {{below(500) - 100.0, below(400) - 100.0}, {2.0 * below(200), 2.0 * below(180)}};
    }
    platform::CGColor color() {
        return {below(5) / 4.0, below(5) / 4.0, below(5) / 4.0, (2 + below(3)) / 4.0};
    }
    // Only transforms that keep whole pixels: renderers smooth edges differently.
    CGAffineTransform transform() {
        constexpr std::array<CGAffineTransform, 6> transforms{{{1, 0, 0, 1, 0, 0},
                                                               {0, 1, -1, 0, 0, 0},
                                                               {-1, 0, 0, -1, 10, 0},
                                                               {1, 0, 0, -1, 0, 7},
                                                               {1, 0, 0, 1, 33, -21},
                                                               {0, 0, 0, 0, 0, 0}}};
        return transforms[below(transforms.size())];
    }
    void clip(NSView& view) {
        view.setClipsToBounds(below(3) == 0);
        std::vector<platform::NSViewClip> clips;
        while (below(2) > 0) {
            const CGRect rect = frame();
            clips.push_back({rect, below(3) == 0 ? CGAffineTransform{0, 1, -1, 0, 300, 50}
                                                 : CGAffineTransform{}});
        }
        view.setClips(clips);
    }
    void add() {
        const CGRect place = frame();
        auto view = makePattern(place, color());
        NSView& parent = views.empty() || below(2) == 0
                             ? *root
                             : *views[below(static_cast<unsigned>(views.size()))];
        parent.addSubview(view,
                          below(2) == 0 ? platform::NSWindowOrderingMode::Above
                                        : platform::NSWindowOrderingMode::Below,
                          nullptr);
        views.push_back(std::move(view));
    }

    std::mt19937 random_;
};

// A window on screen and one off, for two trees that are the same.
struct Windows {
    Windows(const Scene& shown, const Scene& rendered) {
        onScreen.window().setContentView(shown.root);
        offScreen.setContentView(rendered.root);
    }
    // The number of pixels that differ. Without a GPU, both windows compose in the same way. GTK's
    // GL renderer keeps the opacity of a group in 8 bits, and groups nest; so a difference within
    // `tolerance` does not count there.
    int differences(int tolerance = 6) {
        const Picture shown = onScreen.picture();
        return countDifferences(shown, pictureOf(offScreen),
                                onScreen.isComposedByProcessor() ? 0 : tolerance);
    }

    TestWindow onScreen{size};
    platform::OffscreenWindow offScreen{size, onScreen.window().backingScaleFactor()};
};

struct StillScene : Scene {
    StillScene() {
        // The first is large enough for seams between its tiles to show.
        for (const CGRect& frame :
             {CGRect{{10, 10}, {400, 300}}, CGRect{{10, 150}, {100, 80}},
              CGRect{{250, 200}, {200, 150}}, CGRect{{280, 220}, {200, 150}}}) {
            const double shade = static_cast<double>(views.size() + 1) / 4;
            views.push_back(makePattern(frame, {shade, 0.5, 1 - shade, 1}));
            root->addSubview(views.back());
        }
    }
};

// Two views that animate, and one that another fades in over, all for a second.
void animate(const StillScene& scene) {
    const auto add = [&](std::size_t view, platform::CAAnimation& animation) {
        animation.setDuration(1);
        scene.views[view]->layer()->addAnimation(animation, "animation");
    };
    platform::CAKeyframeAnimation opacity("opacity");
    opacity.setValues(std::vector<double>{1, 0, 0.5});
    add(0, opacity);
    platform::CAKeyframeAnimation translation("transform.translation.x");
    translation.setValues(std::vector<double>{0, 100});
    add(1, translation);
    scene.views[2]->layer()->setOpacity(0.5);
    scene.views[3]->layer()->setOpacity(0.75);
    platform::CATransition fade;
    fade.setOutgoingLayer(scene.views[2]->layer());
    add(3, fade);
}

}  // namespace

TEST(SamePicture, OnScreenAndOffAfterAnyChanges) {
    for (unsigned seed = 1; seed <= 4; ++seed) {
        ChangingScene shown(seed);
        ChangingScene rendered(seed);
        Windows windows(shown, rendered);
        for (int step = 0; step < 25; ++step) {
            ASSERT_EQ(windows.differences(), 0) << "seed " << seed << " step " << step;
            for (int i = 0; i < 3; ++i) {
                shown.change();
                rendered.change();
            }
        }
    }
}

TEST(SamePicture, OfAnimatedViewsThatAreNotPaintedAgain) {
    platform::CAVirtualClock clock;
    const double start = platform::CACurrentMediaTime();
    const StillScene shown;
    const StillScene rendered;
    Windows windows(shown, rendered);
    Picture last = windows.onScreen.picture();
    animate(shown);
    animate(rendered);
    for (int step = 1; step <= 11; ++step) {
        clock.advanceTo(start + step / 10.0);
        EXPECT_EQ(windows.differences(), 0) << step;
        Picture picture = windows.onScreen.picture();
        if (step <= 10) {
            EXPECT_GT(countDifferences(picture, last, 6), 0) << step;
        }
        last = std::move(picture);
    }
    for (const auto& view : shown.views) {
        EXPECT_EQ(view->drawCount, 1);
    }
    EXPECT_FALSE(windows.onScreen.window().isAnimating());
    EXPECT_TRUE(desktop::runUntilAsleep());
}

TEST(SamePicture, OfRotatedViewsExceptForTheFilter) {
    const StillScene shown;
    const StillScene rendered;
    Windows windows(shown, rendered);
    for (const StillScene* const scene : {&shown, &rendered}) {
        scene->views[0]->layer()->setTransform(rotation(std::numbers::pi / 12));
    }
    // A GPU filters a few corners of the pattern in its own way. A seam or a hard edge would be
    // hundreds of pixels long.
    EXPECT_LT(windows.differences(48), windows.onScreen.isComposedByProcessor() ? 1 : 20);
}

// Every effect, on the canvas and on layers: a fading group, a blurred and a shadowed one,
// gradients, and objects with layers of their own in rounded clips and translucent groups.
TEST(SamePicture, OfEffects) {
    using display::DisplayFactory;
    const auto rect = [](float x, float y, unsigned argb) {
        auto result = DisplayFactory::createRect();
        result->set(x, y, 90, 60);
        result->setFillColor(argb);
        return result;
    };
    auto root = DisplayFactory::createContainer();
    const auto group = [&](float x, float y) {
        auto result = DisplayFactory::createContainer();
        result->add(rect(0, 0, 0xFF2060C0));
        result->add(rect(40, 30, 0xFFC06020));
        result->setTranslate(x, y);
        root->add(result);
        return result;
    };
    auto background = rect(0, 0, 0xFFFFFFFF);
    background->setWidth(static_cast<float>(size.width));
    background->setHeight(static_cast<float>(size.height));
    root->add(background);
    root->add(rect(200, 10, 0xFF40A040));
    group(20, 20)->setOpacity(0.5);
    group(180, 20)->setBlur(8);
    group(340, 20)->setShadow({4, 6, 12, 0xC0000000});
    const auto layered = group(20, 150);
    layered->getChildren().back()->extractAnimationLayer();
    layered->setOpacity(0.6);
    auto clip = DisplayFactory::createClipContainer(false);
    clip->setBounds({180, 150, 100, 70});
    clip->as<display::graphics::ClipContainer>()->setCornerRadius(25);
    clip->add(rect(170, 140, 0xFF803080));
    clip->add(rect(220, 190, 0xFF30A0A0));
    root->add(clip);
    clip->getChildren().back()->extractAnimationLayer();
    auto ring = DisplayFactory::createCircle();
    ring->set(360, 160, 40);
    display::graphics::RadialGradient fill;
    fill.addColor(0xFFFFFFFF);
    fill.addColor(0xFF2060C0);
    ring->setFillGradient(fill);
    display::graphics::ConicGradient stroke;
    stroke.addColor(0xFFFF0000);
    stroke.addColor(0xFF00FF00);
    ring->setStrokeGradient(stroke);
    ring->setStrokeWidth(10);
    root->add(ring);

    const auto screen = display::Display::instance();
    screen->add(root);
    TestWindow onScreen{size};
    onScreen.window().setContentView(screen->getView());
    const Picture shown = onScreen.picture();
    const bool isExact = onScreen.isComposedByProcessor();
    const double scale = onScreen.window().backingScaleFactor();
    onScreen.window().setContentView(nullptr);
    platform::OffscreenWindow offScreen{size, scale};
    offScreen.setContentView(screen->getView());
    // GL antialiases the edges of rounded clips in its own way.
    EXPECT_EQ(countDifferences(shown, pictureOf(offScreen), isExact ? 0 : 16), 0);
    offScreen.setContentView(nullptr);
    screen->removeAll();
    display::Display::reset();
}

}  // namespace orvane::tests
