#pragma once

#include <memory>
#include <utility>
#include <vector>

namespace orvane::embedding {

// Visits a forest in pre-order, with the depth of each node, the roots' being 1. `childrenOf` gives
// a node's children as a vector of shared pointers. Trees may be deeper than a stack.
template <typename Node, typename ChildrenOf, typename Visit>
void preOrder(const std::vector<std::shared_ptr<Node>>& roots, ChildrenOf childrenOf, Visit visit) {
    std::vector<std::pair<std::shared_ptr<Node>, int>> pending;
    const auto push = [&pending](const std::vector<std::shared_ptr<Node>>& nodes, int depth) {
        for (auto node = nodes.rbegin(); node != nodes.rend(); ++node) {
            pending.emplace_back(*node, depth);
        }
    };
    push(roots, 1);
    while (!pending.empty()) {
        const auto [node, depth] = pending.back();
        pending.pop_back();
        visit(*node, depth);
        push(childrenOf(*node), depth + 1);
    }
}

}  // namespace orvane::embedding
