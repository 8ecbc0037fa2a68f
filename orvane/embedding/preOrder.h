#pragma once

#include <memory>
#include <utility>
#include <vector>

namespace orvane::embedding {

// Visits every node of a forest in pre-order. `visit` receives the node and its depth, which is 1
// for the roots; `childrenOf` returns a node's children as a vector of shared pointers. Neither may
// change the forest. The walk does not recurse, so a tree may be deeper than the call stack.
template <typename Node, typename ChildrenOf, typename Visit>
void preOrder(const std::vector<std::shared_ptr<Node>>& roots, ChildrenOf childrenOf, Visit visit) {
    std::vector<std::pair<Node*, int>> pending;
    const auto push = [&pending](const std::vector<std::shared_ptr<Node>>& nodes, int depth) {
        for (auto node = nodes.rbegin(); node != nodes.rend(); ++node) {
            pending.emplace_back(node->get(), depth);
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
