#include <algorithm>
#include <ctime>
#include <functional>
#include <limits>
#include <stdexcept>

#include "orvane/display/graphics/quartz/QuartzRect.h"
#include "orvane/display/native/createLayer.h"
#include "platform/quartzcore/CAMediaTime.h"
#include "tests/native/Stage.h"

namespace orvane::display {
namespace {

using R = geometry::Rect<double>;
using native::BitmapLayer;

R frameOf(const platform::NSView& view) {
    return R(view.frame());
}

// A display with a container.
class NativeLayerTest : public Stage {
protected:
    void SetUp() override {
        Stage::SetUp();
        display_->add(root_);
    }

    std::shared_ptr<graphics::Container> root_ = DisplayFactory::createContainer();
};

TEST_F(NativeLayerTest, ViewsFollowTheFramesOfTheirLayers) {
    root_->add(rect(10.4F, 20.6F, 100, 80, 0xFFFF0000));
    const auto control = ColorControl::create({30, 40, 20.2, 10});
    root_->add(control);
    // Without a stroke the bounds are those of the rectangle, rounded to whole units.
    EXPECT_EQ(frameOf(*viewOf(root_)), R(10, 21, 100, 80));
    EXPECT_EQ(frameOf(*viewOf(control)), R(20, 19, 21, 10));  // relative to the view around it
    EXPECT_EQ(viewOf(control)->superview(), viewOf(root_).get());
    EXPECT_EQ(pixel(35, 45), 0x00FF00U);
    EXPECT_EQ(pixel(25, 45), shown(0xFF0000));

    control->setTranslate(5, 0);
    EXPECT_EQ(frameOf(*viewOf(control)), R(25, 19, 21, 10));
    control->setVisible(false);
    EXPECT_TRUE(viewOf(control)->isHidden());
    EXPECT_EQ(pixel(37, 45), shown(0xFF0000));
    control->setVisible(true);
    EXPECT_EQ(pixel(37, 45), 0x00FF00U);
}

TEST_F(NativeLayerTest, ALayerGrowsByWhatEffectsPaintOutsideItAndBeginsAtAWholePoint) {
    root_->add(rect(20, 20, 100, 80, 0xFFFF0000));
    const auto inner = rect(50, 50, 20, 20, 0xFF0000FF);
    root_->add(inner);
    inner->setBlur(3);  // reaches 1.5 radii and 4 points
    EXPECT_EQ(frameOf(*viewOf(root_)), R(20, 20, 100, 80));
    inner->setTranslate(-30, 0);
    EXPECT_EQ(frameOf(*viewOf(root_)), R(11, 11, 118, 98));
    inner->setBlur(0);
    EXPECT_EQ(frameOf(*viewOf(root_)), R(20, 20, 100, 80));
}

TEST_F(NativeLayerTest, ViewsAreInTheOrderOfTheirObjects) {
    const auto low = ColorControl::create({0, 0, 40, 40}, 0x0000FF);
    const auto high = ColorControl::create({20, 0, 40, 40}, 0xFF0000);
    root_->add(low);
    root_->add(high);
    EXPECT_EQ(pixel(30, 10), 0xFF0000U);
    const auto between = ColorControl::create({10, 0, 40, 40}, 0x00FF00);
    root_->store(root_->find(high), between);
    EXPECT_EQ(pixel(15, 10), 0x00FF00U);
    EXPECT_EQ(pixel(30, 10), 0xFF0000U);
    EXPECT_EQ(viewOf(high)->layer()->zPosition(), 2);
    root_->remove(low);
    root_->remove(between);
    root_->add(low);
    EXPECT_EQ(pixel(30, 10), 0x0000FFU) << "on top after removals";
}

TEST_F(NativeLayerTest, TheViewMayOutliveItsLayer) {
    auto object = rect(0, 0, 50, 50, 0xFFFF0000);
    display_->add(object);
    const auto view = viewOf(object);
    display_->remove(object);
    object.reset();
    ASSERT_EQ(view->gestureRecognizers().size(), 1U);
    view->drawRect({{0, 0}, {10, 10}});
    window_.setContentView(view);
    window_.sendEvent({platform::NSEventType::LeftMouseDown, {5, 5}});
    window_.display();
}

TEST_F(NativeLayerTest, ControlsKeepTheirPlacesWhenWhatIsAroundThemChanges) {
    const auto group = DisplayFactory::createContainer();
    const auto control = ColorControl::create({30, 40, 20, 10});
    const auto background = rect(0, 0, 100, 100, 0xFFFF0000);
    const auto clip = DisplayFactory::createClipContainer(false);
    clip->setBounds({25, 35, 20, 30});
    group->add(background);
    group->add(clip);
    clip->add(control);
    root_->add(group);
    EXPECT_EQ(pixel(35, 45), 0x00FF00U);
    background->setTranslate(20, 20);
    EXPECT_EQ(pixel(35, 45), 0x00FF00U) << "after the background has moved";
    EXPECT_EQ(pixel(47, 45), shown(0xFF0000));
    root_->remove(group);
    EXPECT_EQ(pixel(35, 45), 0U);
    root_->add(group);
    EXPECT_EQ(pixel(35, 45), 0x00FF00U) << "after the group was away";
    const auto moved = DisplayFactory::createContainer();
    moved->setTranslate(50, 0);
    root_->add(moved);
    moved->add(group);
    EXPECT_EQ(pixel(85, 45), 0x00FF00U) << "in a container with another transformation";
    EXPECT_EQ(pixel(75, 25), shown(0xFF0000));
    EXPECT_EQ(pixel(35, 45), 0U);
}

TEST_F(NativeLayerTest, NothingOfARemovedGroupStaysOnScreen) {
    root_->add(rect(0, 0, 200, 150, 0xFF0000FF));
    const auto group = DisplayFactory::createContainer();
    const auto clip = DisplayFactory::createClipContainer(false);
    clip->setBounds({0, 0, 50, 50});
    clip->add(rect(0, 0, 50, 50, 0xFFFF0000));
    group->add(clip);
    root_->add(group);
    clip->extractAnimationLayer();
    EXPECT_EQ(pixel(5, 5), shown(0xFF0000));
    root_->remove(group);
    EXPECT_EQ(pixel(5, 5), shown(0x0000FF)) << "of a clip container with a wrapper layer";
    root_->add(group);
    EXPECT_EQ(pixel(5, 5), shown(0xFF0000));
    clip->clear();
    const auto own = DisplayFactory::createContainer();
    own->add(rect(0, 0, 50, 50, 0xFF00FF00));
    root_->add(own);
    own->extractAnimationLayer();
    EXPECT_EQ(pixel(5, 5), shown(0x00FF00));
    own->clear();
    EXPECT_EQ(pixel(5, 5), shown(0x0000FF)) << "of a cleared group with a layer of its own";
}

TEST_F(NativeLayerTest, ALayerInsideAnEmptyOneHidesAndComesBack) {
    const auto outer = DisplayFactory::createContainer();
    const auto inner = DisplayFactory::createContainer();
    inner->add(rect(0, 0, 50, 50, 0xFFFF0000));
    outer->add(inner);
    root_->add(outer);
    outer->extractAnimationLayer();
    inner->extractAnimationLayer();
    for (const auto& hidden : {outer, inner, outer}) {
        EXPECT_EQ(pixel(5, 5), shown(0xFF0000));
        hidden->setVisible(false);
        EXPECT_EQ(pixel(5, 5), 0U);
        hidden->setVisible(true);
    }
    EXPECT_EQ(pixel(5, 5), shown(0xFF0000));
}

TEST_F(NativeLayerTest, AnAnimationContinuesWhenItsObjectIsBackInTheSameTurn) {
    const platform::CAVirtualClock clock;
    const auto group = DisplayFactory::createContainer();
    const auto object = rect(0, 0, 50, 50, 0xFFFF0000);
    group->add(object);
    root_->add(group);
    const auto turn = std::make_shared<animation::ValueAnimation>(
        "turn", animation::AttributeName::Rotation, std::vector<float>{0, 3});
    turn->setAnimatable(object->extractAnimationLayer());
    turn->setDuration(6);
    turn->run();
    picture();
    group->remove(object);
    group->add(object);
    picture();
    group->extractAnimationLayer();
    picture();
    EXPECT_TRUE(window_.isAnimating());
    root_->remove(group);
    picture();
    root_->add(group);
    EXPECT_FALSE(window_.isAnimating());
}

TEST_F(NativeLayerTest, AnExceptionOfPaintingLeavesTheCanvasInBalance) {
    struct Throwing : graphics::quartz::QuartzRect {
        void doValidate(const R&) override { throw std::runtime_error("painting"); }
    };
    root_->add(rect(0, 0, 200, 150, 0xFF0000FF));
    picture();
    const auto throwing = std::make_shared<Throwing>();
    throwing->set(100, 100, 20, 20);
    root_->add(throwing);
    EXPECT_THROW(picture(), std::runtime_error);
    root_->remove(throwing);
    root_->add(rect(0, 0, 50, 50, 0xFFFF0000));
    EXPECT_EQ(pixel(5, 5), shown(0xFF0000));
}

TEST_F(NativeLayerTest, ALayerThatIsRemovedByTheCallbackOfItsFrameStaysAway) {
    struct Layer : BitmapLayer {
        void onHandlerFrameChanged() override {
            if (changed) {
                changed();
            }
        }
        std::function<void()> changed;
    };
    const auto object = rect(0, 0, 50, 50, 0xFFFF0000);
    const auto layer = createLayer<Layer>();
    layer->changed = [&] { root_->remove(object); };
    object->extractIntoLayer(layer);
    root_->add(object);
    EXPECT_EQ(layer->getLayerHandler()->superview(), nullptr);
    EXPECT_EQ(object->getParent(), nullptr);
}

TEST_F(NativeLayerTest, AnObjectMayRemoveItselfWithItsLayerWhileItIsPainted) {
    struct Remover : graphics::quartz::QuartzRect {
        void doValidate(const R&) override { removeFromParent(); }
    };
    struct Layer : BitmapLayer {
        ~Layer() override { EXPECT_FALSE(*isPainting); }
        void drawToBuffer(const Rect& rect, void* buffer) override {
            *isPainting = true;
            BitmapLayer::drawToBuffer(rect, buffer);
            *isPainting = false;
        }
        bool* isPainting = nullptr;
    };
    bool isPainting = false;
    {
        const auto remover = std::make_shared<Remover>();
        remover->set(0, 0, 50, 50);
        const auto layer = createLayer<Layer>();
        layer->isPainting = &isPainting;
        remover->extractIntoLayer(layer);
        root_->add(remover);
    }
    picture();
    EXPECT_TRUE(root_->getChildren().empty());
}

TEST_F(NativeLayerTest, ADirtyObjectMayEndAndDoesNotKeepItsLayer) {
    // Its destructor changes another object of the layer.
    struct Last : ContainerObject {
        ~Last() override { other->invalidate(true); }
        std::shared_ptr<DisplayObject> other;
    };
    const auto other = rect(0, 0, 10, 10, 0xFFFF0000);
    root_->add(other);
    for (int i = 0; i < 20; ++i) {
        auto last = std::make_shared<Last>();
        last->other = other;
        const UpdateLock lock(root_);
        root_->add(last);
        root_->remove(last);
    }
    window_.display();

    // The layer of an object that was stored in one of the layer's dirty objects never validates.
    auto owner = DisplayFactory::createContainer();
    auto inner = DisplayFactory::createContainer();
    owner->extractAnimationLayer();
    owner->add(inner);
    owner->remove(inner);
    inner->add(owner);
    const std::weak_ptr<DisplayObject> watched = owner;
    owner.reset();
    inner.reset();
    EXPECT_TRUE(watched.expired());
}

// A container with a control between painted objects.
class BitmapLayerTest : public NativeLayerTest {
protected:
    void SetUp() override {
        NativeLayerTest::SetUp();
        for (const auto& object : {behind_, control_, front_, top_}) {
            root_->add(object);
        }
    }

    std::shared_ptr<DisplayObject> behind_ = rect(0, 0, 100, 100, 0xFFFF0000);
    std::shared_ptr<DisplayObject> control_ = ColorControl::create({20, 20, 40, 40});
    std::shared_ptr<DisplayObject> front_ = rect(40, 40, 40, 40, 0xFF0000FF);
    std::shared_ptr<DisplayObject> top_ = rect(60, 60, 40, 40, 0xFFFFFF00);
};

TEST_F(BitmapLayerTest, EachObjectAfterAControlGetsALayerAboveIt) {
    EXPECT_EQ(behind_->getLayer(), nullptr);
    const auto layer = root_->getLayer();
    const LayerList expected{control_->getLayer(), front_->getLayer(), top_->getLayer()};
    EXPECT_EQ(layer->getSublayers(), expected);
    EXPECT_EQ(pixel(10, 10), shown(0xFF0000));
    EXPECT_EQ(pixel(30, 30), 0x00FF00U);
    EXPECT_EQ(pixel(50, 50), shown(0x0000FF));
    EXPECT_EQ(pixel(70, 70), shown(0xFFFF00));

    // A group after the control moves as a whole and is split on its own layer. Removing the
    // control does not undo the split.
    const auto group = DisplayFactory::createContainer();
    group->add(ColorControl::create({0, 0, 10, 10}, 0x123456));
    group->add(rect(5, 0, 10, 10, 0xFF654321));
    root_->add(group);
    EXPECT_EQ(layer->getSublayers().size(), 4U);
    EXPECT_EQ(group->getLayer()->getSublayers().size(), 2U);
    EXPECT_EQ(pixel(7, 5), shown(0x654321));
    const auto kept = top_->getLayer();
    root_->remove(control_);
    EXPECT_EQ(top_->getLayer(), kept);
}

TEST_F(NativeLayerTest, ALayerOfTwoSiblingsMayMoveIntoALaterOne) {
    for (const bool groupIsExtracted : {false, true}) {
        const auto first = rect(0, 0, 50, 50, 0xFFFF0000);
        const auto second = rect(50, 0, 50, 50, 0xFF00FF00);
        const auto group = DisplayFactory::createContainer();
        root_->add(first);
        root_->add(second);
        root_->add(group);
        const auto shared = second->extractIntoLayer(nullptr);
        first->extractIntoLayer(shared);
        if (groupIsExtracted) {
            group->extractIntoLayer(nullptr);
        }
        group->add(second);  // the layer is inside the group, not below it
        EXPECT_EQ(group->getAscendingLayer()->getSublayers(), LayerList{shared});
        EXPECT_EQ(pixel(10, 10), shown(0xFF0000));
        EXPECT_EQ(pixel(60, 10), shown(0x00FF00));
        root_->clear();
    }
}

// What a change costs next to a control depends on the change, not on the objects around it.
TEST_F(NativeLayerTest, OneMoreObjectNextToAControlCostsTheSameInALargeContainer) {
    const auto add = [](const std::shared_ptr<ContainerObject>& into,
                        const std::shared_ptr<DisplayObject>& before) {
        into->store(into->find(before), rect(0, 0, 5, 5, 0xFFFF0000));
    };
    // The processor time of the fastest of some additions.
    const auto costOf = [](const std::function<void()>& addition) {
        std::clock_t best = std::numeric_limits<std::clock_t>::max();
        for (int i = 0; i < 10; ++i) {
            const std::clock_t start = std::clock();
            addition();
            best = std::min(best, std::clock() - start);
        }
        return static_cast<double>(best + 1);
    };
    const auto nextToControl = [&](int count) {
        const auto control = ColorControl::create({0, 0, 20, 20});
        {
            const UpdateLock lock(root_);
            for (int i = 0; i < count; ++i) {
                add(root_, nullptr);
            }
            root_->add(control);
        }
        const double cost = costOf([&] {
            for (int i = 0; i < 5; ++i) {
                add(root_, control);
                add(root_, nullptr);
            }
        });
        root_->clear();
        return cost;
    };
    EXPECT_LT(nextToControl(40000), 10 * nextToControl(1000));

    // Objects between two that share a layer join it, and each of them counts for its frame.
    const auto amongGuests = [&](int count) {
        const auto first = rect(0, 0, 5, 5, 0xFFFF0000);
        const auto last = rect(9, 0, 5, 5, 0xFFFF0000);
        root_->add(first);
        root_->add(last);
        first->extractIntoLayer(last->extractIntoLayer(nullptr));
        {
            const UpdateLock lock(root_);
            for (int i = 0; i < count; ++i) {
                add(root_, last);
            }
            root_->store(root_->find(last), ColorControl::create({0, 0, 20, 20}));
        }
        const auto control = last->prev();
        const double cost = costOf([&] { add(root_, control); });
        root_->clear();
        return cost;
    };
    EXPECT_LT(amongGuests(2000), 30 * amongGuests(250));
}

TEST_F(NativeLayerTest, AChangeDamagesTheOldAndTheNewArea) {
    using Rects = std::vector<platform::NSBackingRect>;
    const auto damage = [&] {
        const auto rects = window_.display();
        return Rects(rects.begin(), rects.end());
    };
    const auto moved = rect(10, 10, 5, 5, 0xFFFF0000);
    root_->add(rect(0, 0, 100, 100, 0xFFFFFFFF));
    root_->add(moved);
    damage();
    {
        const UpdateLock lock(root_);
        moved->setTranslate(20, 0);
        moved->setTranslate(30, 0);
    }
    EXPECT_EQ(damage(), (Rects{{9, 9, 16, 16}, {39, 9, 46, 16}})) << "with a pixel around it";
    root_->remove(moved);
    EXPECT_EQ(damage(), (Rects{{39, 9, 46, 16}})) << "only the old area";
    EXPECT_TRUE(root_->getLayer()->getSublayers().empty());
}

TEST_F(BitmapLayerTest, FaultyValuesLeaveTheNeighborsOnScreen) {
    const float huge = 1e30F;
    root_->add(rect(150, 100, 20, 20, 0xFF00FFFF));
    const auto expectNeighbors = [&] {
        EXPECT_EQ(pixel(160, 110), shown(0x00FFFF));
        EXPECT_EQ(pixel(10, 30), shown(0xFF0000));
    };
    for (const auto& [position, size] :
         {std::pair{NAN, 10.0F}, {-huge, 2 * huge}, {0.0F, -50.0F}, {huge, 1.0F}}) {
        root_->store(root_->getChildren().begin(),
                     rect(position, position, size, size, 0xFFFFFFFF));
        expectNeighbors();
    }
    for (const auto& [a, d] : {std::pair{0.0F, 1.0F}, {NAN, 1.0F}, {huge, huge}, {0.0F, 0.0F}}) {
        root_->getChildren().front()->setMatrix(a, 0, 0, 0, d, 0);
        front_->setMatrix(a, 0, 0, 0, d, 0);
        expectNeighbors();
    }
}

}  // namespace
}  // namespace orvane::display
