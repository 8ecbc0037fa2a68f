#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <numbers>
#include <numeric>
#include <random>
#include <utility>
#include <vector>

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

// A tree of views under a series of changes that depends on nothing but the seed.
class Scene {
public:
    explicit Scene(unsigned seed) : random_(seed), root_(std::make_shared<NSView>()) {
        root_->setFrame({{0, 0}, size});
        root_->layer()->setBackgroundColor({1, 1, 1, 1});
        for (int i = 0; i < 6; ++i) {
            add();
        }
    }

    const std::shared_ptr<NSView>& root() const { return root_; }

    void change() {
        if (views_.empty() || (views_.size() < 12 && below(6) == 0)) {
            add();
            return;
        }
        const std::size_t index = below(static_cast<unsigned>(views_.size()));
        PatternView& view = *views_[index];
        switch (below(8)) {
            case 0:
                view.removeFromSuperviewWithoutNeedingDisplay();
                views_.erase(views_.begin() + static_cast<std::ptrdiff_t>(index));
                break;
            case 1:
                view.setFrame(frame());
                break;
            case 2:
                view.setHidden(!view.isHidden());
                break;
            case 3:
                view.layer()->setOpacity(below(5) / 4.0);
                break;
            case 4:
                view.layer()->setZPosition(below(4));
                break;
            case 5:
                view.layer()->setTransform(CATransform3D::makeAffineTransform(transform()));
                break;
            case 6:
                view.layer()->setAnchorPoint({below(3) / 2.0, below(3) / 2.0});
                break;
            default:
                view.color = color();
                view.setNeedsDisplayInRect(view.bounds());
                break;
        }
    }

private:
    unsigned below(unsigned end) { return static_cast<unsigned>(random_() % end); }

    // The order in which arguments are evaluated is the compiler's: one draw a statement.
    CGRect frame() {
        const double x = below(500);
        const double y = below(400);
        const double width = below(200);
        const double height = below(180);
        return {{x - 100, y - 100}, {2 * width, 2 * height}};
    }
    platform::CGColor color() {
        const double red = below(5);
        const double green = below(5);
        const double blue = below(5);
        const double alpha = below(3);
        return {red / 4, green / 4, blue / 4, (2 + alpha) / 4};
    }
    // Such as keep pixels whole: how edges are smoothed is each compositor's own affair.
    CGAffineTransform transform() {
        constexpr std::array<CGAffineTransform, 6> transforms{{{1, 0, 0, 1, 0, 0},
                                                               {0, 1, -1, 0, 0, 0},
                                                               {-1, 0, 0, -1, 10, 0},
                                                               {1, 0, 0, -1, 0, 7},
                                                               {1, 0, 0, 1, 33, -21},
                                                               {0, 0, 0, 0, 0, 0}}};
        return transforms[below(transforms.size())];
    }
    void add() {
        const CGRect place = frame();
        auto view = makePattern(place, color());
        NSView& parent = views_.empty() || below(2) == 0
                             ? *root_
                             : *views_[below(static_cast<unsigned>(views_.size()))];
        parent.addSubview(view,
                          below(2) == 0 ? platform::NSWindowOrderingMode::Above
                                        : platform::NSWindowOrderingMode::Below,
                          nullptr);
        views_.push_back(std::move(view));
    }

    std::mt19937 random_;
    std::shared_ptr<NSView> root_;
    std::vector<std::shared_ptr<PatternView>> views_;
};

desktop::Picture pictureOf(platform::OffscreenWindow& window) {
    window.display();
    desktop::Picture picture{window.pixelWidth(), window.pixelHeight(), {}};
    for (int y = 0; y < picture.height; ++y) {
        const std::uint32_t* const row = window.pixels() + static_cast<std::size_t>(y) *
                                                               window.bytesPerRow() /
                                                               sizeof(std::uint32_t);
        std::transform(row, row + picture.width, std::back_inserter(picture.pixels),
                       [](std::uint32_t pixel) { return pixel & 0xFFFFFF; });
    }
    return picture;
}

int difference(std::uint32_t a, std::uint32_t b) {
    int most = 0;
    for (const int shift : {0, 8, 16}) {
        most = std::max(most, std::abs(static_cast<int>(a >> shift & 0xFF) -
                                       static_cast<int>(b >> shift & 0xFF)));
    }
    return most;
}

// How many pixels differ by more than `tolerance` in a component.
int countDifferences(const desktop::Picture& a, const desktop::Picture& b, int tolerance) {
    EXPECT_EQ(a.width, b.width);
    EXPECT_EQ(a.height, b.height);
    int count = 0;
    for (std::size_t i = 0; i < std::min(a.pixels.size(), b.pixels.size()); ++i) {
        count += difference(a.pixels[i], b.pixels[i]) > tolerance ? 1 : 0;
    }
    return count;
}

class SamePicture : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(desktop::connect()); }
};

}  // namespace

TEST_F(SamePicture, OnScreenAndOffAfterAnyChanges) {
    for (unsigned seed = 1; seed <= 4; ++seed) {
        TestWindow onScreen(size);
        platform::OffscreenWindow offScreen(size, onScreen.window().backingScaleFactor());
        Scene shown(seed);
        Scene rendered(seed);
        onScreen.window().setContentView(shown.root());
        offScreen.setContentView(rendered.root());
        for (int step = 0; step < 25; ++step) {
            // The desktop keeps a group's opacity in 8 bits, and groups nest.
            ASSERT_EQ(countDifferences(onScreen.picture(), pictureOf(offScreen), 6), 0)
                << "seed " << seed << " step " << step;
            for (int i = 0; i < 3; ++i) {
                shown.change();
                rendered.change();
            }
        }
    }
}

// Two views that animate, and one that another fades in over, all for a second.
class AnimatedScene {
public:
    AnimatedScene() : root_(std::make_shared<NSView>()) {
        root_->setFrame({{0, 0}, size});
        root_->layer()->setBackgroundColor({1, 1, 1, 1});
        for (const CGRect& frame :
             {CGRect{{10, 10}, {300, 100}}, CGRect{{10, 150}, {100, 80}},
              CGRect{{250, 200}, {200, 150}}, CGRect{{280, 220}, {200, 150}}}) {
            const double shade = static_cast<double>(views_.size()) / 4;
            views_.push_back(makePattern(frame, {shade, 0.5, 1 - shade, 1}));
            root_->addSubview(views_.back());
        }
    }

    const std::shared_ptr<NSView>& root() const { return root_; }

    void animate() {
        platform::CAKeyframeAnimation opacity("opacity");
        opacity.setValues(std::vector<double>{1, 0, 0.5});
        add(0, opacity);
        platform::CAKeyframeAnimation translation("transform.translation.x");
        translation.setValues(std::vector<double>{0, 100});
        add(1, translation);
        platform::CATransition fade;
        fade.setOutgoingLayer(views_[2]->layer());
        add(3, fade);
    }

    int drawCount() const {
        return std::accumulate(views_.begin(), views_.end(), 0,
                               [](int sum, const auto& view) { return sum + view->drawCount; });
    }

private:
    void add(std::size_t view, platform::CAAnimation& animation) {
        animation.setDuration(1);
        views_[view]->layer()->addAnimation(animation, "animation");
    }

    std::shared_ptr<NSView> root_;
    std::vector<std::shared_ptr<PatternView>> views_;
};

TEST_F(SamePicture, OfAnimatedViewsWhichAreNotPaintedAgain) {
    platform::CAVirtualClock clock;
    const double start = platform::CACurrentMediaTime();
    TestWindow onScreen(size);
    platform::OffscreenWindow offScreen(size, onScreen.window().backingScaleFactor());
    AnimatedScene shown;
    AnimatedScene rendered;
    onScreen.window().setContentView(shown.root());
    offScreen.setContentView(rendered.root());
    onScreen.show();
    const int painted = shown.drawCount();
    shown.animate();
    rendered.animate();
    desktop::Picture last;
    for (int step = 0; step <= 11; ++step) {
        clock.advanceTo(start + step / 10.0);
        desktop::Picture picture = onScreen.picture();
        EXPECT_EQ(countDifferences(picture, pictureOf(offScreen), 6), 0) << step;
        if (step > 0 && step <= 10) {
            EXPECT_GT(countDifferences(picture, last, 6), 0) << step;
        }
        last = std::move(picture);
    }
    EXPECT_EQ(shown.drawCount(), painted);
    EXPECT_FALSE(onScreen.window().isAnimating());
    EXPECT_TRUE(desktop::runUntil([] { return desktop::timeToNextWakeUp() > 5; }));
}

TEST_F(SamePicture, OfTurnedViewsButForTheFilter) {
    TestWindow onScreen(size);
    platform::OffscreenWindow offScreen(size, onScreen.window().backingScaleFactor());
    const auto makeScene = [] {
        auto root = std::make_shared<NSView>();
        root->setFrame({{0, 0}, size});
        root->layer()->setBackgroundColor({1, 1, 1, 1});
        // Large enough for seams between tiles to show.
        const auto view = makePattern({{100, 0}, {400, 300}}, {0.25, 0.5, 0.75, 1});
        view->layer()->setTransform(rotation(std::numbers::pi / 12));
        root->addSubview(view);
        return root;
    };
    onScreen.window().setContentView(makeScene());
    offScreen.setContentView(makeScene());
    // Compositors filter a few corners of the pattern their own way. A seam or a hard edge would be
    // hundreds of pixels long.
    EXPECT_LT(countDifferences(onScreen.picture(), pictureOf(offScreen), 48), 20);
}

}  // namespace orvane::tests
