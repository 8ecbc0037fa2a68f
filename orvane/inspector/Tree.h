#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace orvane::display {
class Display;
class DisplayLayer;
class DisplayObject;
}  // namespace orvane::display

namespace orvane::inspector {

// An object or a layer of the application; the inspector keeps none of them alive.
struct Node {
    std::weak_ptr<display::DisplayObject> object;
    std::weak_ptr<display::DisplayLayer> layer;
    // Identifies the object or the layer; 0 for none.
    std::uint64_t key = 0;

    static Node of(const std::shared_ptr<display::DisplayObject>& object);
    static Node of(const std::shared_ptr<display::DisplayLayer>& layer);
    friend bool operator==(const Node& a, const Node& b) { return a.key == b.key; }
};

// A line of the tree.
struct Row {
    Node node;
    int depth = 1;
    bool hasChildren = false;
    bool isExpanded = false;

    friend bool operator==(const Row&, const Row&) = default;
};

// What a line says.
struct RowText {
    std::string kind;
    std::string detail;  // the text or the label of an object; the number of objects of a layer
    std::string mark;    // the number of an object
    bool isVisible = true;
    friend bool operator==(const RowText&, const RowText&) = default;
};

// Lists the objects or the layers of a display as lines: those whose ancestors are expanded or,
// with a filter, those that match and their ancestors. It stores which nodes are expanded and
// nothing of the trees.
class Tree {
public:
    enum class Kind { Objects, Layers };

    void setKind(Kind kind) { kind_ = kind; }
    Kind getKind() const { return kind_; }
    // Shows nodes whose kind, text or label contains this text, without regard to the case of ASCII
    // letters. A text that begins with "#" is a number, one with a "/" in it the path of objects
    // (pathOf) or the beginning of one. Empty: all.
    void setFilter(const std::string& text);
    bool isFiltered() const { return !filter_.empty(); }
    bool matches(const Node& node) const;
    void setExpanded(const Node& node, bool isExpanded) { expanded_[node.key] = isExpanded; }
    // Expands the ancestors of a node.
    void reveal(const Node& node);

    std::vector<Row> list(const display::Display& display) const;
    static RowText describe(const Node& node);

private:
    template <typename Root, typename ChildrenOf>
    std::vector<Row> listFrom(const Root& roots, ChildrenOf childrenOf) const;
    bool isExpanded(const Row& row, std::size_t children) const;

    Kind kind_ = Kind::Objects;
    std::string filter_;
    std::unordered_map<std::uint64_t, bool> expanded_;
};

}  // namespace orvane::inspector
