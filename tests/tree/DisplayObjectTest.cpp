#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "tests/tree/FakeLayer.h"

namespace orvane::display {
namespace {

using geometry::Matrix;
using Object = std::shared_ptr<DisplayObject>;
using R = DisplayObject::Rect;

TEST(DisplayObject, SettersComposeOrReplaceTheTransformation) {
    Spot spot;
    spot.translate(10, 20);
    spot.scale(2, 3);
    EXPECT_EQ(spot.getTransformation(), Matrix(2, 0, 10, 0, 3, 20));
    spot.setScale(4, 5);
    EXPECT_EQ(spot.getTransformation(), Matrix(4, 0, 0, 0, 5, 0));
    spot.applyMatrix(1, 0, 1, 0, 1, 1);
    EXPECT_EQ(spot.getTransformation(), Matrix(4, 0, 4, 0, 5, 5));
    spot.setMatrix(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(spot.getTransformation(), Matrix(1, 2, 3, 4, 5, 6));

    // The full transformation includes that of the root.
    const auto root = std::make_shared<Group>();
    const auto leaf = std::make_shared<Spot>();
    root->add(leaf);
    root->setScale(2, 2);
    leaf->setTranslate(5, 0);
    EXPECT_EQ(leaf->applyTransformToRect({0, 0, 1, 1}), R(10, 0, 2, 2));
    EXPECT_EQ(Spot(R(100, 200, 10, 10)).convertRectToFrame({5, 5, -3, -4}), R(102, 201, 3, 4))
        << "relative to the frame, and normalized";
}

TEST(DisplayNode, FindsAndErasesOnlyItsOwnChildren) {
    const auto root = std::make_shared<Group>();
    const auto other = std::make_shared<Group>();
    const Object spot = std::make_shared<Spot>();
    root->add(std::make_shared<Spot>());
    other->add(spot);
    EXPECT_EQ(root->find(spot), root->getChildren().end());
    EXPECT_EQ(root->erase(root->find(spot)), root->getChildren().end());
    EXPECT_EQ(root->getChildren().size(), 1U);
}

TEST(DisplayNode, RefusesWhatWouldMakeACycle) {
    const auto root = std::make_shared<Group>();
    const auto inner = std::make_shared<Group>();
    const auto outer = std::make_shared<FakeLayer>("outer");
    const auto layer = std::make_shared<FakeLayer>("layer");
    outer->store(outer->getSublayers().end(), layer);
    layer->addObject(root);
    root->add(inner);
    testing::internal::CaptureStderr();
    root->add(nullptr);
    root->add(root);
    inner->add(root);
    layer->store(layer->getSublayers().end(), outer);
    layer->store(layer->getSublayers().end(), nullptr);
    layer->addObject(nullptr);
    EXPECT_EQ(inner->extractIntoLayer(layer), nullptr);
    EXPECT_EQ(inner->extractIntoLayer(outer), nullptr);
    const std::string lines = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 8);
    layer->addObject(root);  // is there already
    EXPECT_EQ(root->getChildren().size(), 1U);
    EXPECT_TRUE(inner->getChildren().empty());
    EXPECT_TRUE(layer->getSublayers().empty());
    EXPECT_EQ(layer->getObjects().size(), 1U);
}

TEST(DisplayNode, TakesAnElementFromItsFormerParent) {
    const auto first = std::make_shared<Group>();
    const auto second = std::make_shared<Group>();
    const auto element = std::make_shared<Group>();
    first->add(element);
    second->add(element);
    element->add(first);
    EXPECT_EQ(first->getParent(), element);
    EXPECT_TRUE(first->getChildren().empty());

    const Object above = std::make_shared<Spot>();
    second->add(above);
    second->add(second->getChildren().front());
    EXPECT_EQ(second->getChildren(),
              (DisplayContainer<DisplayObject, ContainerObject>::Children{above, element}));

    // The same holds for layers and their objects; siblings may share a layer.
    const auto a = std::make_shared<FakeLayer>("a");
    const auto b = std::make_shared<FakeLayer>("b");
    const auto shared = std::make_shared<FakeLayer>("shared");
    a->addObject(second);
    above->extractIntoLayer(shared);
    element->extractIntoLayer(shared);
    EXPECT_EQ(names(*a), "shared ");
    b->store(b->getSublayers().end(), shared);
    EXPECT_EQ(names(*a), "");
    b->addObject(second);
    EXPECT_TRUE(a->getObjects().empty());
}

TEST(DisplayNode, VisitorsAndPaintersMayEraseObjects) {
    // Erases itself and the sibling before it.
    struct Eraser : Spot {
        void validate(const Rect&) override {
            const std::weak_ptr<DisplayObject> self = shared_from_this();
            const std::shared_ptr<ContainerObject> parent = getParent();
            parent->erase(parent->getChildren().begin());
            parent->erase(parent->getChildren().begin());
            EXPECT_FALSE(self.expired());
        }
    };
    for (const int others : {1, 100}) {
        const auto root = std::make_shared<Group>();
        const auto last = std::make_shared<Spot>();
        root->add(std::make_shared<Spot>());
        root->add(std::make_shared<Eraser>());
        const std::weak_ptr<DisplayObject> eraser = root->getChildren().back();
        for (int i = 1; i < others; ++i) {
            root->add(std::make_shared<Spot>(R(i * 100.0, 0, 10, 10)));
        }
        root->add(last);
        root->validate({0, 0, 5, 5});
        EXPECT_TRUE(eraser.expired());
        EXPECT_EQ(last->validations, 1);

        int visits = 0;
        root->traverse([&](const Object& object) {
            ++visits;
            object->removeFromParent();
            return false;
        });
        EXPECT_EQ(visits, others + 1);
        EXPECT_TRUE(root->getChildren().empty());
    }
}

TEST(DisplayNode, ClearsAndDestroysInOrder) {
    struct LoggingGroup : Group {
        ~LoggingGroup() override { *log += std::to_string(getChildren().size()) + " children "; }
        Position erase(Position position) override {
            *log += std::to_string((*position)->getId() - firstId) + " ";
            if (*log == throwAfter) {
                throw std::runtime_error("refused");
            }
            return Group::erase(position);
        }
        std::string* log = nullptr;
        std::string throwAfter;
        std::uint64_t firstId = 0;
    };
    std::string log;
    auto root = std::make_shared<LoggingGroup>();
    root->log = &log;
    for (int i = 0; i < 3; ++i) {
        root->add(std::make_shared<Spot>());
    }
    root->firstId = root->getChildren().front()->getId();
    root->throwAfter = "0 1 ";
    EXPECT_THROW(root->clear(), std::runtime_error);
    ASSERT_EQ(root->getChildren().size(), 2U);
    EXPECT_EQ(root->getChildren().back()->getIndex(), 1U);
    root->clear();
    EXPECT_EQ(log, "0 1 1 2 ");

    log.clear();
    auto inner = std::make_shared<LoggingGroup>();
    inner->log = &log;
    inner->add(std::make_shared<Spot>());
    auto outer = std::make_shared<Group>();
    outer->add(std::make_shared<Group>());
    outer->add(root);
    root->add(inner);
    root->add(std::make_shared<Spot>());
    inner.reset();
    root.reset();
    outer.reset();
    EXPECT_EQ(log, "2 children 1 children ");
}

TEST(DisplayNode, AChildMayOutliveItsParent) {
    auto root = std::make_shared<Group>();
    const auto leaf = std::make_shared<Spot>();
    root->add(leaf);
    root.reset();
    EXPECT_EQ(leaf->getParent(), nullptr);
    EXPECT_TRUE(leaf->isVisible());
    leaf->invalidate(true);
}

TEST(DisplayNode, SupportsVeryDeepTrees) {
    constexpr int kLevels = 10000;
    const auto layer = std::make_shared<FakeLayer>();
    auto root = std::make_shared<Group>();
    layer->setDisplay(someDisplay());
    layer->addObject(root);
    std::shared_ptr<ContainerObject> deepest = root;
    {
        const UpdateLock lock(root);
        for (int i = 0; i < kLevels; ++i) {
            const auto level = std::make_shared<Group>();
            deepest->add(level);
            deepest = level;
        }
        deepest->add(std::make_shared<Spot>(Spot::Rect(3, 4, 5, 6)));
    }
    EXPECT_EQ(root->getFrame(), DisplayObject::Rect(3, 4, 5, 6));
    int met = 0;
    root->traverse([&](const Object&) { return ++met < 0; });
    EXPECT_EQ(met, kLevels + 2);
    root->validate({0, 0, 10, 10});
    root->invalidate(true);
    layer->removeObject(root);
    std::weak_ptr<ContainerObject> ghost = deepest;
    deepest.reset();
    root.reset();
    EXPECT_TRUE(ghost.expired());
}

}  // namespace
}  // namespace orvane::display
