#include "orvane/inspector/Tree.h"

#include <algorithm>
#include <cctype>

#include "orvane/commons/className.h"
#include "orvane/embedding/childrenOf.h"
#include "orvane/embedding/kindOf.h"
#include "orvane/embedding/labelOf.h"
#include "orvane/embedding/preOrder.h"
#include "orvane/embedding/rootLayers.h"
#include "orvane/embedding/textOf.h"
#include "orvane/inspector/pathOf.h"

namespace orvane::inspector {

using display::DisplayLayer;
using display::DisplayObject;

namespace {

// Nodes above this depth are expanded at first, unless they have too many children.
constexpr int kFirstDepth = 4;
constexpr std::size_t kFirstChildren = 1000;

// Numbers begin at 0, which is the key of no object.
std::uint64_t keyOf(const DisplayObject& object) {
    return object.getId() + 1;
}

std::string lowered(std::string text) {
    std::ranges::transform(text, text.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

const auto sublayersOf = [](const DisplayLayer& layer) -> const auto& {
    return layer.getSublayers();
};

}  // namespace

Node Node::of(const std::shared_ptr<DisplayObject>& object) {
    return {object, {}, object ? keyOf(*object) : 0};
}

Node Node::of(const std::shared_ptr<DisplayLayer>& layer) {
    return {{}, layer, static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(layer.get()))};
}

void Tree::setFilter(const std::string& text) {
    filter_ = lowered(text);
}

bool Tree::matches(const Node& node) const {
    if (filter_.find('/') != std::string::npos) {
        const auto object = node.object.lock();
        return object && lowered(pathOf(*object)).starts_with(filter_);
    }
    const RowText text = describe(node);
    return filter_.starts_with('#')
               ? text.mark == filter_
               : lowered(text.kind + '\n' + text.detail).find(filter_) != std::string::npos;
}

void Tree::reveal(const Node& node) {
    if (const auto object = node.object.lock()) {
        for (auto parent = object->getParent(); parent; parent = parent->getParent()) {
            expanded_[keyOf(*parent)] = true;
        }
    } else if (const auto layer = node.layer.lock()) {
        for (auto above = layer->getSuperlayer(); above; above = above->getSuperlayer()) {
            expanded_[Node::of(above).key] = true;
        }
    }
}

bool Tree::isExpanded(const Row& row, std::size_t children) const {
    const auto found = expanded_.find(row.node.key);
    return found != expanded_.end() ? found->second
                                    : row.depth < kFirstDepth && children <= kFirstChildren;
}

template <typename Root, typename ChildrenOf>
std::vector<Row> Tree::listFrom(const Root& roots, ChildrenOf childrenOf) const {
    using Element = typename Root::value_type::element_type;
    static const Root none;
    std::vector<Row> rows;
    // The walk asks for the children of a node right after it has visited it.
    embedding::preOrder(
        roots,
        [&](Element& node) -> const Root& {
            return isFiltered() || rows.back().isExpanded ? childrenOf(node) : none;
        },
        [&](Element& node, int depth) {
            Row row{Node::of(std::static_pointer_cast<Element>(node.shared_from_this())), depth};
            const std::size_t children = childrenOf(node).size();
            row.hasChildren = children != 0;
            row.isExpanded = row.hasChildren && (isFiltered() || isExpanded(row, children));
            rows.push_back(std::move(row));
        });
    if (!isFiltered()) {
        return rows;
    }
    // From the end, a node is kept if it matches or if the row kept last is one level below it.
    std::vector<Row> kept;
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        const bool isAncestor = !kept.empty() && kept.back().depth > row->depth;
        if (isAncestor || matches(row->node)) {
            row->hasChildren = row->isExpanded = isAncestor;
            kept.push_back(std::move(*row));
        }
    }
    std::ranges::reverse(kept);
    return kept;
}

std::vector<Row> Tree::list(const display::Display& display) const {
    return kind_ == Kind::Objects ? listFrom(display.getObjects(), embedding::childrenOf)
                                  : listFrom(embedding::rootLayers(display), sublayersOf);
}

RowText Tree::describe(const Node& node) {
    if (const auto object = node.object.lock()) {
        std::string detail = embedding::labelOf(*object);
        const std::string text = embedding::textOf(*object);
        if (!text.empty()) {
            detail += (detail.empty() ? "\"" : "  \"") + text + '"';
        }
        std::ranges::replace(detail, '\n', ' ');
        return {embedding::kindOf(*object), std::move(detail),
                '#' + std::to_string(object->getId()), object->isVisible()};
    }
    if (const auto layer = node.layer.lock()) {
        const auto& objects = layer->getObjects();
        const auto first =
            std::ranges::find_if(objects, [](const auto& object) { return !object.expired(); });
        std::string detail;
        if (first != objects.end()) {
            const RowText text = describe(Node::of(first->lock()));
            detail = text.kind + ' ' + text.mark;
            if (objects.size() > 1) {
                detail += " and " + std::to_string(objects.size() - 1) + " more";
            }
        }
        const DisplayLayer& shown = *layer;
        return {commons::className(typeid(shown)), std::move(detail), {}, !layer->isHidden()};
    }
    return {"gone", {}, {}, false};
}

}  // namespace orvane::inspector
