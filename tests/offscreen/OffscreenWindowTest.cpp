#include "platform/offscreen/OffscreenWindow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <memory>
#include <random>
#include <vector>

#include "platform/appkit/NSBackingStore.h"
#include "tests/appkit/PaintedView.h"

using namespace orvane::platform;

namespace {

std::vector<std::uint32_t> picture(const OffscreenWindow& window) {
    std::vector<std::uint32_t> pixels;
    for (int y = 0; y < window.pixelHeight(); ++y) {
        const std::uint32_t* row =
            window.pixels() + static_cast<std::size_t>(y) * window.bytesPerRow() / 4;
        pixels.insert(pixels.end(), row, row + window.pixelWidth());
    }
    return pixels;
}

std::shared_ptr<NSView> block(const CGRect& frame, const CGColor& color) {
    auto view = std::make_shared<NSView>();
    view->setFrame(frame);
    view->layer()->setBackgroundColor(color);
    return view;
}

constexpr CGColor kRed{1, 0, 0, 1};
constexpr CGColor kBlue{0, 0, 1, 1};

// A tree of views with random changes. Two scenes with the same seed change in the same way.
class Scene {
public:
    Scene(unsigned seed, double scale) : window({300, 200}, scale), random_(seed) {
        root_ = block({{0, 0}, {300, 200}}, {0, 0, 0, 1});
        window.setContentView(root_);
    }

    // Adds a document that is moved in a clip. What is behind it may have one color where the clip
    // is: an ellipse that is larger than the window, or nothing.
    void addDocument() {
        if (below(2) == 0) {
            views_.push_back(std::make_shared<PaintedView>(
                below(3) == 0 ? frame() : CGRect{{-300, -200}, {900, 600}}, color()));
            root_->addSubview(views_.back());
        }
        if (below(4) == 0) {
            root_->addSubview(block(frame(), color()));
        }
        const auto clip =
            block(below(2) == 0 ? CGRect{{0, 0}, {300, 200}} : CGRect{{40, 20}, {200, 150}},
                  below(2) == 0 ? CGColor{} : color());
        clip->setClipsToBounds(true);
        if (below(3) == 0) {
            clip->setClips({below(2) == 0
                                ? NSViewClip{frame(), CGAffineTransform::makeRotation(below(6))}
                                : NSViewClip{{{10, 4}, {280, 190}}, {}}});
        }
        document_ = std::make_shared<PaintedView>(CGRect{{0, 0}, {900, 1200}}, color());
        clip->addSubview(document_);
        root_->addSubview(clip);
    }

    void change() {
        if (document_ && below(3) > 0) {
            return scroll();
        }
        switch (views_.empty() ? 0 : below(11)) {
            case 10:
                return clip(any());
            case 2:
                return resize(any());
            case 3:
                return any().setHidden(below(3) == 0);
            case 4:
                return any().layer()->setOpacity(below(5) / 4.0);
            case 5:
                return any().layer()->setZPosition(below(3));
            case 6:
                return turn(any());
            case 7:
                return any().layer()->setBackgroundColor(color());
            case 8:
                return any().setColor(color());
            case 9:
                return below(3) == 0 ? remove() : restack();
            default:
                return add();
        }
    }

    OffscreenWindow window;

private:
    int below(int limit) { return std::uniform_int_distribution(0, limit - 1)(random_); }
    const std::shared_ptr<PaintedView>& anyView() {
        return views_[static_cast<std::size_t>(below(static_cast<int>(views_.size())))];
    }
    PaintedView& any() { return *anyView(); }
    CGColor color() { return {below(3) / 2.0, below(3) / 2.0, below(3) / 2.0, below(4) / 3.0}; }
    CGRect frame() {
        return {{static_cast<double>(below(340) - 40), static_cast<double>(below(240) - 40)},
                {static_cast<double>(1 + below(120)), static_cast<double>(1 + below(120))}};
    }
    NSView& place() {
        if (document_ && below(3) == 0) {
            return *document_;
        }
        return below(2) == 0 || views_.empty() ? *root_ : static_cast<NSView&>(any());
    }

    // By a few points or by many, in both directions.
    void scroll() {
        const double reach = below(3) == 0 ? 700 : 40;
        const auto next = [&](double from, double limit) {
            return std::clamp(from + std::floor((below(21) - 10) * reach / 10), -limit, 0.0);
        };
        const CGPoint from = document_->frame().origin;
        document_->setFrame({{below(2) == 0 ? from.x : next(from.x, 600), next(from.y, 1000)},
                             document_->frame().size});
    }

    void add() {
        const auto view = std::make_shared<PaintedView>(frame(), color());
        place().addSubview(view);
        views_.push_back(view);
    }
    void resize(PaintedView& view) {
        view.setFrame(frame());
        view.setNeedsDisplayInRect(view.bounds());  // the ellipse fills it
    }
    void turn(NSView& view) {
        const std::array<CGAffineTransform, 4> transforms{
            CGAffineTransform{}, CGAffineTransform::makeRotation(below(6)),
            CGAffineTransform::makeScale(below(3) / 2.0, 1.5),
            CGAffineTransform::makeTranslation(below(50), below(50) / 3.0)};
        view.layer()->setAnchorPoint({below(3) / 2.0, below(3) / 2.0});
        view.layer()->setTransform(
            CATransform3D::makeAffineTransform(transforms[static_cast<std::size_t>(below(4))]));
    }
    void clip(NSView& view) {
        view.setClipsToBounds(below(3) == 0);
        std::vector<NSViewClip> clips;
        while (below(3) > 0) {
            CGRect rect = frame();
            rect.origin.x += below(3) / 3.0;
            clips.push_back({rect, below(2) == 0 ? CGAffineTransform()
                                                 : CGAffineTransform::makeRotation(below(6))});
        }
        view.setClips(clips);
    }
    void remove() {
        anyView()->removeFromSuperviewWithoutNeedingDisplay();
        std::erase_if(views_, [&](const auto& view) { return view->window() == nullptr; });
    }
    void restack() {
        const std::shared_ptr<PaintedView> view = anyView();
        const NSWindowOrderingMode mode =
            below(2) == 0 ? NSWindowOrderingMode::Below : NSWindowOrderingMode::Above;
        NSView& superview = below(3) == 0 ? place() : *view->superview();
        superview.addSubview(view, mode, &any());
    }

    std::mt19937 random_;
    std::shared_ptr<NSView> root_;
    std::shared_ptr<PaintedView> document_;  // null without addDocument()
    std::vector<std::shared_ptr<PaintedView>> views_;
};

}  // namespace

TEST(OffscreenWindow, AnImageComposedInPiecesEqualsOneComposedAtOnce) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        const double scale = seed % 3 == 0 ? 2 : seed % 3 == 1 ? 1 : 1.5;
        Scene pieces(seed, scale);
        Scene whole(seed, scale);
        for (int step = 0; step < 60; ++step) {
            pieces.change();
            whole.change();
            if (step % 3 != 0) {
                pieces.window.display();
            }
        }
        pieces.window.display();
        whole.window.display();
        EXPECT_TRUE(picture(pieces.window) == picture(whole.window)) << "seed " << seed;
    }
}

TEST(OffscreenWindow, PixelsThatAreScrolledEqualComposedOnes) {
    int moves = 0;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        const double scale = seed % 3 == 0 ? 1.5 : 1;
        Scene scene(seed, scale);
        for (unsigned i = 0; i < seed % 5; ++i) {
            scene.change();  // views behind the document
        }
        scene.addDocument();
        for (int step = 0; step < 40; ++step) {
            const std::uint32_t* const before = scene.window.pixels();
            for (int i = 0; i <= step % 3; ++i) {
                scene.change();
            }
            scene.window.display();
            moves += scene.window.pixels() != before ? 1 : 0;
            if (step % 4 == 0) {
                const std::vector<std::uint32_t> scrolled = picture(scene.window);
                scene.window.setBackingScaleFactor(scale);  // composes everything
                scene.window.display();
                ASSERT_TRUE(scrolled == picture(scene.window)) << "seed " << seed;
            }
        }
    }
    EXPECT_GE(moves, 453) << "pixels were copied";
}

TEST(OffscreenWindow, ComposesOnlyWhatChanged) {
    OffscreenWindow window({400, 300});
    const auto root = block({{0, 0}, {400, 300}}, kBlue);
    window.setContentView(root);
    std::vector<std::shared_ptr<PaintedView>> views;
    for (int i = 0; i < 12; ++i) {
        const CGPoint place{10.0 + i % 4 * 100, 10.0 + i / 4 * 100};
        views.push_back(std::make_shared<PaintedView>(CGRect{place, {30, 30}}));
        root->addSubview(views.back());
    }
    const auto composed = [&window] {
        const auto rects = window.display();
        return std::vector<NSBackingRect>(rects.begin(), rects.end());
    };
    using Rects = std::vector<NSBackingRect>;
    EXPECT_EQ(composed(), (Rects{{0, 0, 400, 300}}));
    EXPECT_EQ(composed(), Rects{});
    views[5]->setNeedsDisplayInRect({{5, 5}, {5, 5}});
    EXPECT_EQ(composed(), (Rects{{114, 114, 121, 121}}));
    views[0]->setFrame({{210, 160}, {30, 30}});
    EXPECT_EQ(composed(), (Rects{{10, 10, 40, 40}, {210, 160, 240, 190}}));
    views[1]->setHidden(true);
    views[3]->removeFromSuperviewWithoutNeedingDisplay();
    views[9]->layer()->setOpacity(0.5);
    EXPECT_EQ(composed(), (Rects{{310, 10, 340, 40}, {110, 10, 140, 40}, {110, 210, 140, 240}}));
    views[6]->setFrame({{115, 115}, {30, 30}});
    composed();
    views[6]->layer()->setZPosition(-1);
    EXPECT_EQ(composed().size(), 1U) << "only where the two overlap";
}

TEST(OffscreenWindow, AClipHoldsForAllThatIsInside) {
    OffscreenWindow window({40, 30});
    const auto root = block({{0, 0}, {40, 30}}, {0, 0, 0, 1});
    const auto outer = block({{10, 10}, {10, 10}}, kRed);
    const auto inner = block({{-5, 5}, {20, 10}}, kBlue);
    outer->addSubview(inner);
    root->addSubview(outer);
    window.setContentView(root);
    // How many pixels of the two views are on screen, whole pixels and halves.
    const auto shown = [&] {
        window.display();
        std::array<double, 2> sums{};
        for (const std::uint32_t pixel : picture(window)) {
            sums[0] += (pixel >> 16 & 255) / 255.0;
            sums[1] += (pixel & 255) / 255.0;
        }
        return std::array{std::lround(2 * sums[0]) / 2.0, std::lround(2 * sums[1]) / 2.0};
    };
    using Counts = std::array<double, 2>;
    EXPECT_EQ(shown(), (Counts{50, 200}));
    outer->setClipsToBounds(true);
    EXPECT_EQ(shown(), (Counts{50, 50}));
    outer->setClips({{{{0, 0}, {15, 30}}, {}}});
    EXPECT_EQ(shown(), (Counts{25, 25}));
    outer->layer()->setTransform(CATransform3D::makeTranslation(-5, 0, 0));
    EXPECT_EQ(shown(), (Counts{50, 50})) << "the clip does not move with the view";
    outer->setClips({{{{5, 10}, {10, 10}}, {}, 5}});
    EXPECT_EQ(shown(), (Counts{39.5, 39})) << "a circle";
    outer->setClips({{{{0, 0}, {9.5, 30}}, {}}});
    EXPECT_EQ(shown(), (Counts{22.5, 22.5})) << "half a pixel";
    outer->layer()->setOpacity(0.5);
    EXPECT_EQ(shown(), (Counts{11.5, 11.5})) << "rounded up, in a group";
    outer->layer()->setOpacity(1);
    outer->layer()->setTransform(CATransform3DIdentity);
    // A square on its corner, with an area of 50 pixels.
    outer->setClips({{{{-5, -5}, {10, 10}},
                      CGAffineTransform::makeScale(std::sqrt(0.5), std::sqrt(0.5))
                          .rotate(std::acos(-1) / 4)
                          .concat(CGAffineTransform::makeTranslation(15, 15))}});
    EXPECT_EQ(shown(), (Counts{25, 25}));
    outer->setClips({{{{0, 0}, {NAN, 5}}, {}}});
    EXPECT_EQ(shown(), (Counts{0, 0}));
}

TEST(OffscreenWindow, WhatIsClippedAwayIsNotPainted) {
    OffscreenWindow window({100, 100});
    const auto root = block({{0, 0}, {100, 100}}, {});
    const auto view = std::make_shared<PaintedView>(CGRect{{0, 0}, {50, 50}});
    root->addSubview(view);
    view->setClips({{{{60, 60}, {10, 10}}, {}}});
    window.setContentView(root);
    window.display();
    EXPECT_EQ(view->backingStore(), nullptr);
    view->setClips({{{{40, 40}, {20, 20}}, {}}});
    window.display();
    EXPECT_NE(view->backingStore(), nullptr);
    // Of a large view, only what the clip leaves is stored, with a margin of tiles.
    view->setFrame({{0, 0}, {5000, 5000}});
    window.display();
    EXPECT_EQ(view->backingStore()->area(), (NSBackingRect{0, 0, 512, 512}));
    view->setFrame({{-2000, -2000}, {5000, 5000}});
    window.display();
    EXPECT_EQ(view->backingStore()->area(), (NSBackingRect{1536, 1536, 2560, 2560}));
    // A view that has not many more pixels than the window is stored whole.
    window.setContentSize({600, 600});
    window.setBackingScaleFactor(2);
    for (const auto& [side, stored] : {std::pair{840.0, 1680}, {860.0, 512}}) {
        view->setFrame({{0, 0}, {side, side}});
        window.display();
        EXPECT_EQ(view->backingStore()->area(), (NSBackingRect{0, 0, stored, stored}));
    }
}

TEST(OffscreenWindow, AViewWhoseTransformHasNoInverseIsNotDrawn) {
    OffscreenWindow window({20, 10});
    const auto root = block({{0, 0}, {20, 10}}, {});
    const auto odd = block({{0, 0}, {10, 10}}, kRed);
    odd->addSubview(std::make_shared<PaintedView>(CGRect{{0, 0}, {10, 10}}));
    root->addSubview(odd);
    root->addSubview(block({{10, 0}, {10, 10}}, kBlue));
    window.setContentView(root);
    for (const double scale : {0.0, std::nan(""), HUGE_VAL, 1e-300, 1e300}) {
        odd->layer()->setTransform(
            CATransform3D::makeAffineTransform(CGAffineTransform::makeScale(scale, scale)));
        window.display();
        EXPECT_EQ(picture(window)[5 * 20 + 15], 0xFF0000FFU) << scale;
    }
    odd->layer()->setTransform(CATransform3DIdentity);
    window.display();
    EXPECT_EQ(picture(window)[5 * 20 + 5], 0xFFFF0000U);
}
