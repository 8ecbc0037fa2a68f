#pragma once

#include <cstddef>
#include <cstdint>
#include <forward_list>
#include <memory>

#include "orvane/commons/virtual_enable_shared_from_this.h"

namespace orvane::display {

struct DisplayTraits {};

template <typename T, typename P>
class DisplayContainer;

// A node of the object tree or of the layer tree: it knows its parent and its place among its
// siblings. T is the element type, P the type of the parent.
//
// For every child c at position i of container p: c.index is i and c.parent locks to p. That makes
// next, prev and DisplayContainer::find constant time.
template <typename T, typename P, typename Traits = DisplayTraits>
class DisplayNode : public virtual commons::virtual_enable_shared_from_this<T> {
public:
    ~DisplayNode() override = default;

    // Position in the parent's children; 0 without a parent.
    std::uint64_t getIndex() const { return index_; }
    std::shared_ptr<P> getParent() const { return parent_.lock(); }

    // The siblings, or null.
    std::shared_ptr<T> next() const;
    std::shared_ptr<T> prev() const;

    // Root first, this node last.
    std::forward_list<std::shared_ptr<T>> getPathToRoot();

    // The deepest node on both paths to the root, null for nodes of different trees.
    static std::shared_ptr<T> findCommonParent(const std::shared_ptr<T>& a,
                                               const std::shared_ptr<T>& b);

    // This node or its ancestor whose direct parent is `ancestor`, or null.
    std::shared_ptr<T> findChildOf(const std::shared_ptr<T>& ancestor);

    // Erases this node from its parent through the parent's virtual erase.
    void removeFromParent();

protected:
    // The live parent, borrowed: the hot paths walk upward without counting references.
    P* parentOrNull() const { return parent_.expired() ? nullptr : parentAddress_; }

private:
    friend class DisplayContainer<T, P>;

    void setParent(const std::shared_ptr<P>& parent) {
        parent_ = parent;
        parentAddress_ = parent.get();
    }
    // The parent, when this node stands where its index says.
    P* parentHoldingThis() const;

    std::uint64_t index_ = 0;
    std::weak_ptr<P> parent_;
    P* parentAddress_ = nullptr;  // read only while parent_ has not expired
};

}  // namespace orvane::display

#include "orvane/display/tree/DisplayContainer.h"
