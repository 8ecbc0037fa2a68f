#pragma once

#include <cstddef>
#include <cstdint>
#include <forward_list>
#include <memory>

#include "orvane/commons/virtual_enable_shared_from_this.h"

namespace orvane::display {

// The traits of both trees; carries nothing.
struct DisplayTraits {};

template <typename T, typename P>
class DisplayContainer;

// A node of the object tree or of the layer tree. It knows its parent and its position among its
// siblings. T is the type of the nodes, P the type of their parents.
//
// Invariant: a child at position i of container p has index i and parent p. It makes next, prev and
// DisplayContainer::find constant time. A node holds its parent weakly. Not thread-safe.
template <typename T, typename P, typename Traits = DisplayTraits>
class DisplayNode : public virtual commons::virtual_enable_shared_from_this<T> {
public:
    ~DisplayNode() override = default;

    // The position among the children of the parent; 0 without a parent.
    std::uint64_t getIndex() const { return index_; }
    // Null for a root, and after the parent was destroyed.
    std::shared_ptr<P> getParent() const { return parent_.lock(); }

    // The sibling after this node, or before it; null if there is none:
    std::shared_ptr<T> next() const;
    std::shared_ptr<T> prev() const;

    // The nodes from the root to this node, both included.
    std::forward_list<std::shared_ptr<T>> getPathToRoot();

    // The deepest node on the paths of both nodes to the root; null for nodes of different trees. A
    // node is on its own path.
    static std::shared_ptr<T> findCommonParent(const std::shared_ptr<T>& a,
                                               const std::shared_ptr<T>& b);

    // The child of `ancestor` that is this node or one of its ancestors; null when there is none.
    std::shared_ptr<T> findChildOf(const std::shared_ptr<T>& ancestor);

    // Erases this node from its parent, through the parent's virtual erase. Does nothing without a
    // parent.
    void removeFromParent();

protected:
    // The parent, borrowed, or null. Paths that run often walk upward with it, because it does not
    // change a reference count.
    P* parentOrNull() const { return parent_.expired() ? nullptr : parentAddress_; }

private:
    friend class DisplayContainer<T, P>;

    void setParent(const std::shared_ptr<P>& parent) {
        parent_ = parent;
        parentAddress_ = parent.get();
    }
    // The parent, if its child at index_ is this node; otherwise null.
    P* parentHoldingThis() const;

    std::uint64_t index_ = 0;
    std::weak_ptr<P> parent_;
    P* parentAddress_ = nullptr;  // read only while parent_ has not expired
};

}  // namespace orvane::display

#include "orvane/display/tree/DisplayContainer.h"
