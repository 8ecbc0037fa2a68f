#pragma once

#include <iterator>
#include <utility>
#include <vector>

#include "orvane/display/tree/DisplayNode.h"

namespace orvane::display {

// A node that owns an ordered vector of children. A tree owns in one direction only, from parent to
// child. Not thread-safe: a tree belongs to the application's thread.
template <typename T, typename P>
class DisplayContainer : public virtual DisplayNode<T, P, DisplayTraits> {
public:
    using Node = DisplayNode<T, P, DisplayTraits>;
    using Children = std::vector<std::shared_ptr<T>>;
    using Position = typename Children::const_iterator;

    ~DisplayContainer() override;

    // Erases all children, the first one first, through the virtual erase, so that the bookkeeping
    // of a subclass runs for each. Linear; in the virtual erase the container has only the children
    // that are not waiting for their turn.
    virtual void clear();

    // Inserts `element`, which must not be null, before `position` and returns its position. The
    // former parent of the element is not notified: erase the element there first.
    virtual Position store(Position position, const std::shared_ptr<T>& element);

    // Removes the child at `position` and returns the position after it. The end position, which
    // find returns for an element that is not a child, erases nothing.
    virtual Position erase(Position position);

    // The position of `element`; the end position for null and for an element that is not a child.
    // Constant time.
    Position find(const std::shared_ptr<T>& element) const;

protected:
    // The children in drawing order, the last one on top.
    const Children& children() const { return children_; }

private:
    friend Node;

    void renumberFrom(std::size_t first);

    Children children_;
};

// ---- DisplayNode ----

template <typename T, typename P, typename Traits>
P* DisplayNode<T, P, Traits>::parentHoldingThis() const {
    P* const parent = parentOrNull();
    if (parent == nullptr) {
        return nullptr;
    }
    const auto& siblings = static_cast<const DisplayContainer<T, P>*>(parent)->children_;
    const bool here =
        index_ < siblings.size() && static_cast<const DisplayNode*>(siblings[index_].get()) == this;
    return here ? parent : nullptr;
}

template <typename T, typename P, typename Traits>
std::shared_ptr<T> DisplayNode<T, P, Traits>::next() const {
    const P* const parent = parentHoldingThis();
    if (parent == nullptr) {
        return nullptr;
    }
    const auto& siblings = static_cast<const DisplayContainer<T, P>*>(parent)->children_;
    return index_ + 1 < siblings.size() ? siblings[index_ + 1] : nullptr;
}

template <typename T, typename P, typename Traits>
std::shared_ptr<T> DisplayNode<T, P, Traits>::prev() const {
    const P* const parent = parentHoldingThis();
    if (parent == nullptr || index_ == 0) {
        return nullptr;
    }
    return static_cast<const DisplayContainer<T, P>*>(parent)->children_[index_ - 1];
}

template <typename T, typename P, typename Traits>
std::forward_list<std::shared_ptr<T>> DisplayNode<T, P, Traits>::getPathToRoot() {
    std::forward_list<std::shared_ptr<T>> path;
    path.push_front(this->shared_from_this());
    while (const std::shared_ptr<P> parent = path.front()->getParent()) {
        path.push_front(parent);
    }
    return path;
}

template <typename T, typename P, typename Traits>
std::shared_ptr<T> DisplayNode<T, P, Traits>::findCommonParent(const std::shared_ptr<T>& a,
                                                               const std::shared_ptr<T>& b) {
    const auto pathA = a->getPathToRoot();
    const auto pathB = b->getPathToRoot();
    std::shared_ptr<T> common;
    for (auto i = pathA.begin(), j = pathB.begin();
         i != pathA.end() && j != pathB.end() && *i == *j; ++i, ++j) {
        common = *i;
    }
    return common;
}

template <typename T, typename P, typename Traits>
std::shared_ptr<T> DisplayNode<T, P, Traits>::findChildOf(const std::shared_ptr<T>& ancestor) {
    const DisplayNode* const wanted = ancestor.get();
    DisplayNode* current = this;
    P* parent = current->parentOrNull();
    while (parent != nullptr && static_cast<const DisplayNode*>(parent) != wanted) {
        current = parent;
        parent = current->parentOrNull();
    }
    if (parent == nullptr) {
        return nullptr;
    }
    // Read from the ancestor's list where possible: a cast in the class diamond is slow.
    return current->parentHoldingThis() != nullptr
               ? static_cast<const DisplayContainer<T, P>*>(parent)->children_[current->index_]
               : current->shared_from_this();
}

template <typename T, typename P, typename Traits>
void DisplayNode<T, P, Traits>::removeFromParent() {
    if (const std::shared_ptr<P> parent = getParent()) {
        const std::shared_ptr<T> self = this->shared_from_this();
        parent->erase(parent->find(self));
    }
}

// ---- DisplayContainer ----

template <typename T, typename P>
DisplayContainer<T, P>::~DisplayContainer() {
    // The children of a container that is destroyed by another container's destructor are left to
    // that one: otherwise a tree of thousands of levels would need as many nested calls.
    static thread_local Children* orphans = nullptr;
    if (orphans != nullptr) {
        orphans->insert(orphans->end(), std::make_move_iterator(children_.begin()),
                        std::make_move_iterator(children_.end()));
        return;
    }
    Children dying = std::move(children_);
    orphans = &dying;
    while (!dying.empty()) {
        const std::shared_ptr<T> last = std::move(dying.back());
        dying.pop_back();
    }
    orphans = nullptr;
}

template <typename T, typename P>
void DisplayContainer<T, P>::clear() {
    // Each child is erased while it is the only one here: with its later siblings present, every
    // erasure would move and renumber all of them.
    while (!children_.empty()) {
        Children waiting = std::exchange(children_, {});
        std::size_t next = 0;
        try {
            while (next < waiting.size()) {
                std::shared_ptr<T> child = std::move(waiting[next++]);
                Node& node = *child;
                if (static_cast<const DisplayContainer*>(node.parentOrNull()) != this) {
                    continue;  // something that an erasure called has moved it elsewhere
                }
                children_.insert(children_.begin(), std::move(child));
                renumberFrom(0);
                erase(children_.begin());
            }
        } catch (...) {
            children_.insert(children_.end(), waiting.begin() + static_cast<std::ptrdiff_t>(next),
                             waiting.end());
            renumberFrom(0);
            throw;
        }
    }
}

template <typename T, typename P>
auto DisplayContainer<T, P>::store(Position position, const std::shared_ptr<T>& element)
    -> Position {
    const auto stored = children_.insert(position, element);
    Node& node = **stored;
    node.setParent(this->template as<P>());
    const auto index = static_cast<std::size_t>(stored - children_.begin());
    renumberFrom(index);
    return children_.begin() + static_cast<std::ptrdiff_t>(index);
}

template <typename T, typename P>
auto DisplayContainer<T, P>::erase(Position position) -> Position {
    if (position == children_.end()) {
        return position;
    }
    const std::shared_ptr<T> element = *position;  // keeps it alive inside the operation
    const auto next = children_.erase(position);
    Node& node = *element;
    node.index_ = 0;
    node.setParent(nullptr);
    renumberFrom(static_cast<std::size_t>(next - children_.begin()));
    return next;
}

template <typename T, typename P>
auto DisplayContainer<T, P>::find(const std::shared_ptr<T>& element) const -> Position {
    if (!element) {
        return children_.end();
    }
    const Node& node = *element;
    const auto* const parent = static_cast<const DisplayContainer*>(node.parentOrNull());
    if (parent != this || node.index_ >= children_.size() || children_[node.index_] != element) {
        return children_.end();
    }
    return children_.begin() + static_cast<std::ptrdiff_t>(node.index_);
}

template <typename T, typename P>
void DisplayContainer<T, P>::renumberFrom(std::size_t first) {
    for (std::size_t i = first; i < children_.size(); ++i) {
        Node& node = *children_[i];
        node.index_ = i;
    }
}

}  // namespace orvane::display
