#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/tree/FakeLayer.h"

namespace orvane::display {
namespace {

using Object = std::shared_ptr<DisplayObject>;
using Layer = std::shared_ptr<DisplayLayer>;

// An object whose frame depends on the transformations above it.
class PlacedSpot : public DisplayObject {
protected:
    Rect computeFrame() override { return applyTransformToRect({0, 0, 10, 10}); }
};

// After any sequence of operations both trees are consistent, the sublayers of each layer are in
// the drawing order of the objects that own them, and every frame equals an independent
// computation.
class RandomTree : public testing::TestWithParam<unsigned> {
protected:
    void SetUp() override {
        layer_->setDisplay(someDisplay());
        layer_->addObject(root_);
        root_->ownLayer();
        groups_.push_back(root_);
        all_.push_back(root_);
    }

    template <typename C>
    auto& any(C& from) {
        return from[random_() % from.size()];
    }

    // Between two neighbors without layers of their own, the layers of a stored element go before
    // the nearest sublayer after the next sibling. Layers inside that sibling are skipped, so the
    // order of layers is not guaranteed there.
    static bool skipsLayersOf(const Object& prev, const Object& next) {
        return next && !next->getLayer() && !next->getDescendingLayers().empty() &&
               !(prev && prev->getLayer());
    }

    void insertSomething() {
        const std::shared_ptr<Group> into = any(groups_);
        const auto& siblings = into->getChildren();
        const std::size_t asked = random_() % (siblings.size() + 1);
        std::size_t place = asked;
        Object element;
        if (!outside_.empty() && random_() % 3 == 0) {
            element = any(outside_);
            outside_.erase(std::find(outside_.begin(), outside_.end(), element));
        } else if (random_() % 4 == 0) {
            element = any(all_);  // leaves the container that it is in
        } else if (random_() % 3 == 0) {
            const auto group = std::make_shared<Group>();
            groups_.push_back(group);
            element = group;
        } else {
            element = std::make_shared<PlacedSpot>();
            if (random_() % 2 == 0) {
                element->extractIntoLayer(std::make_shared<FakeLayer>());
            }
        }
        std::vector<Object> expected(siblings.begin(), siblings.end());
        expected.insert(expected.begin() + static_cast<std::ptrdiff_t>(place), element);
        for (std::size_t i = 0; i < expected.size(); ++i) {
            if (expected[i] == element && i != place) {
                expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(i));
                place -= i < place ? 1 : 0;
            }
        }
        if (element == root_ || into->findChildOf(element) || into == element ||
            skipsLayersOf(place > 0 ? expected[place - 1] : nullptr,
                          place + 1 < expected.size() ? expected[place + 1] : nullptr)) {
            if (!element->getParent()) {
                outside_.push_back(element);
            }
            return;
        }
        into->store(siblings.begin() + static_cast<std::ptrdiff_t>(asked), element);
        EXPECT_EQ(std::vector<Object>(siblings.begin(), siblings.end()), expected);
        if (std::find(all_.begin(), all_.end(), element) == all_.end()) {
            all_.push_back(element);
        }
    }

    void eraseSomething() {
        const Object victim = any(all_);
        // Groups leave less often, because all that is below them leaves, too.
        if (victim != root_ && victim->getParent() &&
            (victim->asContainer() == nullptr || random_() % 4 == 0)) {
            const Layer own = victim->ownsLayer() ? victim->getLayer() : nullptr;
            victim->removeFromParent();
            if (own) {
                EXPECT_EQ(victim->getLayer(), own) << "an owner keeps its layer";
                EXPECT_EQ(own->getSuperlayer(), nullptr);
            }
            outside_.push_back(victim);
        }
    }

    void step() {
        switch (random_() % 6) {
            case 0:
            case 1:
                return insertSomething();
            case 2:
                return eraseSomething();
            case 3: {
                const Object object = any(all_);
                if (random_() % 4 == 0 && !skipsLayersOf(object->prev(), object->next())) {
                    object->extractAnimationLayer();
                }
                return;
            }
            case 4:
                any(all_)->getFrame();  // its ancestors' frames may stay unknown
                return any(all_)->translate(static_cast<float>(random_() % 9),
                                            static_cast<float>(random_() % 9));
            default: {
                // Few are hidden at a time: below a hidden group there is nothing to compare.
                if (hidden_.size() == 3) {
                    hidden_.front()->setVisible(true);
                    hidden_.erase(hidden_.begin());
                    return;
                }
                const Object object = any(all_);
                object->setVisible(false);
                if (!isHidden(object)) {
                    hidden_.push_back(object);
                }
            }
        }
    }

    bool isHidden(const Object& object) const {
        return std::find(hidden_.begin(), hidden_.end(), object) != hidden_.end();
    }

    template <typename C>
    static void expectLinks(const std::shared_ptr<C>& node, const auto& children) {
        std::uint64_t i = 0;
        for (const auto& child : children) {
            EXPECT_EQ(child->getIndex(), i++);
            EXPECT_EQ(child->getParent(), node);
        }
    }

    // Appends the layers in the order in which a walk below `object` finds them. `on` is the layer
    // that the objects draw on.
    void collect(const Object& object, const Layer& on, std::vector<Layer>& order) {
        ContainerObject* const group = object->asContainer();
        if (group == nullptr) {
            return;
        }
        expectLinks(group->as<ContainerObject>(), group->getChildren());
        for (const Object& child : group->getChildren()) {
            if (const Layer own = child->getLayer(); own && own != on) {
                order.push_back(own);
                expectOrder(child, own);
            } else {
                collect(child, on, order);
            }
        }
    }
    void expectOrder(const Object& object, const Layer& layer) {
        std::vector<Layer> expected;
        collect(object, layer, expected);
        EXPECT_EQ(layer->getSublayers(), expected) << "under object " << object->getId();
        expectLinks<DisplayLayer>(layer, layer->getSublayers());
    }

    // The frame of `object`, whose parent's coordinates begin at (x, y) and is `visible`.
    DisplayObject::Rect expectFrames(const Object& object, double x, double y, bool visible) {
        const DisplayObject::Rect own = object->getTransformation().mapRect({0, 0, 10, 10});
        x += own.x;
        y += own.y;
        visible = visible && !isHidden(object);
        DisplayObject::Rect frame(x, y, 10, 10);
        if (const ContainerObject* const group = object->asContainer()) {
            frame = {};
            for (const Object& child : group->getChildren()) {
                const auto childFrame = expectFrames(child, x, y, visible);
                if (visible && !isHidden(child)) {
                    frame.unite(childFrame);
                }
            }
        }
        EXPECT_EQ(object->isVisible(), visible);
        EXPECT_EQ(object->getFrame(), frame) << "of object " << object->getId();
        return frame;
    }
    static void expectLayerFrame(const Layer& layer) {
        DisplayLayer::Rect frame;
        for (const auto& entry : layer->getObjects()) {
            if (const Object object = entry.lock()) {
                frame.unite(object->getFrame());
            }
        }
        for (const Layer& sublayer : layer->getSublayers()) {
            expectLayerFrame(sublayer);
            frame.unite(sublayer->getLayerFrame());
        }
        EXPECT_EQ(layer->getLayerFrame(), frame);
    }

    std::mt19937 random_{GetParam()};
    std::shared_ptr<FakeLayer> layer_ = std::make_shared<FakeLayer>();
    std::shared_ptr<Group> root_ = std::make_shared<Group>();
    std::vector<std::shared_ptr<Group>> groups_;
    std::vector<Object> all_;
    std::vector<Object> outside_;
    std::vector<Object> hidden_;
};

TEST_P(RandomTree, LayersFollowObjects) {
    for (int i = 0; i < 400; ++i) {
        step();
        expectOrder(root_, layer_);
        if (i % 3 == 0) {  // between the other steps frames stay unknown
            expectFrames(root_, 0, 0, true);
            expectLayerFrame(layer_);
        }
        EXPECT_FALSE(layer_->isDirty() && !layer_->getSublayers().empty() &&
                     !layer_->isValidationLocked() && !layer_->getLayerFrame().isEmpty());
        if (HasFailure()) {
            FAIL() << "at step " << i;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomTree, testing::Range(0U, 60U));

}  // namespace
}  // namespace orvane::display
