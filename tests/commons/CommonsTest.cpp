#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "orvane/commons/ByteArray.h"
#include "orvane/commons/eraseFromCollection.h"
#include "orvane/commons/virtual_enable_shared_from_this.h"

namespace {

using namespace orvane::commons;

TEST(ByteArray, HoldsItsOwner) {
    const auto storage = std::make_shared<std::vector<unsigned char>>(3, 'x');
    const ByteArray bytes(storage->data(), storage->size(), storage);
    EXPECT_EQ(storage.use_count(), 2);
}

struct Node : virtual_enable_shared_from_this<Node> {};
struct Other : virtual_enable_shared_from_this<Other> {};
struct Left : virtual Node {};
struct Right : virtual Node, Other {};
struct Diamond : Left, Right {};

TEST(VirtualEnableSharedFromThis, ADiamondHasOneControlBlock) {
    const auto diamond = std::make_shared<Diamond>();
    const auto node = static_cast<Left&>(*diamond).Node::shared_from_this();
    const auto other = static_cast<Right&>(*diamond).Other::shared_from_this();
    EXPECT_EQ(node.get(), static_cast<Node*>(diamond.get()));
    EXPECT_EQ(other.get(), static_cast<Other*>(diamond.get()));
    EXPECT_EQ(diamond.use_count(), 3);
    EXPECT_EQ(node->as<Diamond>(), diamond);
    EXPECT_EQ(other->as<Left>(), std::static_pointer_cast<Left>(diamond));
}

TEST(VirtualEnableSharedFromThis, AWrongTypeGivesNullAndAnObjectWithoutOwnerThrows) {
    EXPECT_EQ(std::make_shared<Node>()->as<Left>(), nullptr);
    Node unowned;
    EXPECT_THROW(unowned.as<Node>(), std::bad_weak_ptr);
    EXPECT_THROW(unowned.shared_from_this(), std::bad_weak_ptr);
}

TEST(EraseFromCollection, RemovesAllEqualPointersAndKeepsTheOrder) {
    const auto a = std::make_shared<int>(1);
    const auto b = std::make_shared<int>(1);
    const auto c = std::make_shared<int>(1);
    // The same address with another control block; only the address counts.
    const std::shared_ptr<int> alias(std::shared_ptr<void>(), a.get());
    using Collection = std::vector<std::shared_ptr<int>>;
    Collection collection{b, a, c, a, alias};
    EXPECT_TRUE(eraseFromCollection(collection, collection[1]))
        << "the value may be an element of the collection";
    EXPECT_EQ(collection, (Collection{b, c}));
    EXPECT_FALSE(eraseFromCollection(collection, a));
    EXPECT_EQ(collection, (Collection{b, c}));
}

}  // namespace
