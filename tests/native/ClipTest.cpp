#include <algorithm>
#include <random>

#include "orvane/display/native/createLayer.h"
#include "platform/quartzcore/CAKeyframeAnimation.h"
#include "platform/quartzcore/CAMediaTime.h"
#include "tests/native/Stage.h"

namespace orvane::display {
namespace {

using platform::CATransform3D;

// Layers must not be visible: a tree of clip containers, whose objects change, looks the same
// whether or not some of the objects have layers of their own.
class ClippedLayers : public Stage, public testing::WithParamInterface<unsigned> {
protected:
    // Plays the changes of the seed, and returns the pictures after each round.
    std::vector<std::vector<std::uint32_t>> play(bool extract) {
        random_.seed(GetParam());
        const auto root = DisplayFactory::createContainer();
        groups_ = {root};
        objects_.clear();
        display_->add(root);
        std::vector<std::vector<std::uint32_t>> pictures;
        for (int round = 0; round < 25; ++round) {
            for (int i = 0; i < 3; ++i) {
                change(extract);
            }
            pictures.push_back(picture());
        }
        display_->removeAll();
        return pictures;
    }

private:
    unsigned below(unsigned end) { return static_cast<unsigned>(random_() % end); }
    // Whole numbers, because the view of a layer is at a whole pixel.
    float any(int from, int to) {
        return static_cast<float>(from + static_cast<int>(below(static_cast<unsigned>(to - from))));
    }
    geometry::Rect<double> anyBounds() {
        const float x = any(0, 100);
        const float y = any(0, 70);
        return {x, y, any(20, 110), any(20, 90)};
    }

    void add() {
        const auto into = groups_[below(static_cast<unsigned>(groups_.size()))];
        std::shared_ptr<DisplayObject> object;
        const unsigned kind = below(6);
        if (kind < 2) {
            const auto clip = DisplayFactory::createClipContainer(false);
            clip->setBounds(anyBounds());
            groups_.push_back(clip);
            object = clip;
        } else if (kind < 3) {
            groups_.push_back(DisplayFactory::createContainer());
            object = groups_.back();
        } else {
            const auto bounds = anyBounds();
            object = rect(static_cast<float>(bounds.x), static_cast<float>(bounds.y),
                          static_cast<float>(bounds.width), static_cast<float>(bounds.height),
                          static_cast<unsigned>(random_()) | 0xFF000000);
        }
        into->add(object);
        objects_.push_back(object);
    }

    void change(bool extract) {
        if (objects_.size() < 8 || below(4) == 0) {
            return add();
        }
        const auto object = objects_[below(static_cast<unsigned>(objects_.size()))];
        const auto bounds = anyBounds();
        const float dx = any(-20, 20);
        const auto& into = groups_[below(static_cast<unsigned>(groups_.size()))];
        switch (below(6)) {
            case 0:
                if (extract) {
                    object->extractAnimationLayer();
                }
                return;
            case 1:
                return object->translate(dx, 5);
            case 2:
                // Below a hidden group there is nothing to compare.
                return object->setVisible(!object->isVisible() ||
                                          (object->asContainer() != nullptr && below(4) != 0));
            case 3:
                if (const auto clip = object->as<graphics::ClipContainer>()) {
                    clip->setBounds(bounds);
                }
                return;
            case 4:
                if (object->asContainer() != nullptr) {
                    object->setMatrix(0, 1, -1, 0, 100, dx);  // a quarter turn keeps whole pixels
                }
                return;
            default:
                if (object != into &&
                    (object->asContainer() == nullptr || !into->findChildOf(object))) {
                    into->add(object);
                    object->invalidate(true);
                }
        }
    }

    std::mt19937 random_;
    std::vector<std::shared_ptr<ContainerObject>> groups_;
    std::vector<std::shared_ptr<DisplayObject>> objects_;
};

TEST_P(ClippedLayers, LookLikeWhatIsPainted) {
    const auto painted = play(false);
    const auto layered = play(true);
    for (std::size_t round = 0; round < painted.size(); ++round) {
        const auto differing = std::ranges::mismatch(painted[round], layered[round]).in1;
        ASSERT_TRUE(differing == painted[round].end())
            << "round " << round << " at " << (differing - painted[round].begin()) % kWidth << ", "
            << (differing - painted[round].begin()) / kWidth;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, ClippedLayers, testing::Range(0U, 20U));

// A clip container of 50 by 50 in a group.
class ClipTest : public Stage {
protected:
    void SetUp() override {
        Stage::SetUp();
        display_->add(root_);
        root_->add(clip_);
        clip_->setBounds({0, 0, 50, 50});
    }

    std::shared_ptr<graphics::Container> root_ = DisplayFactory::createContainer();
    std::shared_ptr<graphics::SizedContainer> clip_ = DisplayFactory::createClipContainer(false);
};

TEST_F(ClipTest, CutsControlsOffForTheEyeAndForThePointer) {
    const auto control = ColorControl::create({20, 20, 60, 60});
    clip_->add(rect(0, 0, 9, 9, 0xFFFF0000));
    clip_->add(control);
    EXPECT_EQ(pixel(45, 45), 0x00FF00U);
    EXPECT_EQ(pixel(55, 45), 0U);
    EXPECT_EQ(view_->hitTest({45, 45}), viewOf(control).get());
    EXPECT_NE(view_->hitTest({55, 45}), viewOf(control).get());
    EXPECT_EQ(pixel(3, 3), shown(0xFF0000));
    clip_->as<graphics::ClipContainer>()->setCornerRadius(25);
    EXPECT_EQ(pixel(3, 3), 0U);
    EXPECT_EQ(pixel(45, 45), 0U);
    EXPECT_EQ(pixel(40, 40), 0x00FF00U);
    clip_->as<graphics::ClipContainer>()->setCornerRadius(0);
    root_->store(root_->getChildren().begin(), rect(-20, -20, 5, 5, 0xFFFF0000));
    EXPECT_EQ(pixel(45, 45), 0x00FF00U) << "when the origin of the layer around it has moved";
    EXPECT_EQ(pixel(55, 45), 0U);
    clip_->setTranslate(-20, 0);
    EXPECT_EQ(pixel(5, 45), 0x00FF00U) << "the container's transformation moves its children";
    EXPECT_EQ(pixel(52, 45), 0U) << "and not the clip";
    root_->setTranslate(100, 0);
    EXPECT_EQ(pixel(145, 45), 0x00FF00U);
    EXPECT_EQ(pixel(155, 45), 0U);
    // The clip is turned by 45 degrees.
    clip_->setTranslate(0, 0);
    root_->setMatrix(0.6F, -0.6F, 100, 0.6F, 0.6F, 10);
    EXPECT_EQ(pixel(100, 60), 0x00FF00U);
    EXPECT_EQ(pixel(80, 62), 0x000000U);
    EXPECT_NE(view_->hitTest({80, 62}), viewOf(control).get());
    // A control at the top level of a scroll container.
    const auto scroll =
        DisplayFactory::createScrollContainer(graphics::ScrollContainer::Type::Both, false);
    scroll->setBounds({0, 100, 50, 30});
    scroll->add(ColorControl::create({40, 120, 60, 60}, 0x0000FF));
    display_->add(scroll);
    EXPECT_EQ(pixel(45, 125), 0x0000FFU);
    EXPECT_EQ(pixel(55, 125), 0U);
    EXPECT_EQ(pixel(45, 135), 0U);
}

TEST_F(ClipTest, HoldsForEachGuestOfOneLayer) {
    const auto turned = DisplayFactory::createContainer();
    const auto other = DisplayFactory::createClipContainer(false);
    other->setBounds({0, 0, 50, 50});
    turned->setMatrix(0.6F, -0.6F, 100, 0.6F, 0.6F, 70);
    turned->add(other);
    root_->add(turned);
    const auto layer = createLayer<native::BitmapLayer>();
    for (const auto& clip : {clip_, other}) {
        clip->add(rect(0, 0, 80, 80, 0xFFFF0000));
        clip->getChildren().front()->extractIntoLayer(layer);
    }
    EXPECT_EQ(pixel(45, 45), shown(0xFF0000));
    EXPECT_EQ(pixel(55, 45), 0U);
    EXPECT_EQ(pixel(100, 100), shown(0xFF0000));
    EXPECT_EQ(pixel(100, 140), 0U) << "below the corner of the turned clip";
    clip_->setBounds({0, 0, 60, 60});
    EXPECT_EQ(pixel(55, 45), shown(0xFF0000));
}

TEST_F(ClipTest, HoldsWhileLayersMove) {
    platform::CAVirtualClock clock;
    const double start = platform::CACurrentMediaTime();
    const auto slide = [&](const std::shared_ptr<DisplayLayer>& layer) {
        platform::CAKeyframeAnimation move("transform.translation.x");
        move.setValues(std::vector<double>{0, 100});
        move.setDuration(10);
        const auto native = std::dynamic_pointer_cast<native::NativeLayer>(layer);
        native->getLayerHandler()->layer()->addAnimation(move, "move");
    };
    const auto content = rect(0, 0, 30, 30, 0xFFFF0000);
    clip_->add(content);
    slide(content->extractAnimationLayer());
    clock.advanceTo(start + 3);
    EXPECT_EQ(pixel(45, 5), shown(0xFF0000)) << "from 30 to 60";
    EXPECT_EQ(pixel(55, 5), 0U);
    clock.advanceTo(start + 11);

    // The layer of the container moves inside its wrapper, and the wrapper with the clip.
    const auto wrapper = clip_->extractAnimationLayer();
    slide(clip_->getLayer());
    clock.advanceTo(start + 14);
    EXPECT_EQ(pixel(45, 5), shown(0xFF0000));
    EXPECT_EQ(pixel(55, 5), 0U);
    slide(wrapper);
    clock.advanceTo(start + 15);
    EXPECT_EQ(pixel(55, 5), shown(0xFF0000)) << "from 50 to 80, and cut off at 60";
    EXPECT_EQ(pixel(65, 5), 0U);
}

}  // namespace
}  // namespace orvane::display
