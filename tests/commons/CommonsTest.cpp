#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "orvane/commons/ByteArray.h"
#include "orvane/commons/eraseFromCollection.h"
#include "orvane/commons/virtual_enable_shared_from_this.h"

namespace {

using namespace orvane::commons;

TEST(ByteArray, ACopySharesBytesAndOwner) {
    const auto storage = std::make_shared<std::vector<unsigned char>>(3, 'x');
    const std::weak_ptr<void> owner = storage;
    ByteArray copy;
    {
        const ByteArray original(storage->data(), storage->size(), storage);
        copy = original;
    }
    EXPECT_EQ(copy.data(), storage->data());
    EXPECT_EQ(copy.size(), 3U);
    EXPECT_EQ(owner.use_count(), 2);
    copy = ByteArray::createFromArray(nullptr, 0);
    EXPECT_EQ(owner.use_count(), 1);
    EXPECT_EQ(copy.data(), nullptr);
    EXPECT_EQ(copy.size(), 0U);
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
    const struct {
        Collection before;
        Collection after;
        bool found;
    } cases[] = {
        {{}, {}, false},
        {{a}, {}, true},
        {{b, c}, {b, c}, false},
        {{a, b, a, c, alias}, {b, c}, true},
    };
    for (const auto& each : cases) {
        Collection collection = each.before;
        EXPECT_EQ(eraseFromCollection(collection, a), each.found);
        EXPECT_EQ(collection, each.after);
    }
    Collection own{a, b, a};
    EXPECT_TRUE(eraseFromCollection(own, own[0]))
        << "the value may be an element of the collection";
    EXPECT_EQ(own, Collection{b});
}

}  // namespace
