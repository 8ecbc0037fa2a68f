#pragma once

#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include "orvane/inspector/Tree.h"
#include "orvane/inspector/widgets.h"

namespace orvane::inspector {

// Shows the lines of a tree. Pressing a line chooses its node, pressing the triangle before it
// expands it; Up, Down, Left and Right do both by the keyboard.
class TreeList {
public:
    struct Handlers {
        std::function<void(const Node&)> chosen;
        // The pointer is over a line; over none for a node without a key.
        std::function<void(const Node&)> hovered;
        std::function<void(const Node&, bool isExpanded)> expanded;
    };

    explicit TreeList(Handlers handlers);

    // What contains the list, for resize() to place.
    const std::shared_ptr<display::graphics::Container>& getContainer() const { return container_; }
    const std::shared_ptr<display::graphics::ListContainer>& getList() const { return list_; }
    void resize(const display::geometry::Rect<double>& rect);
    // Shows other lines, or what the same lines say now. Keeps the place of those that stay.
    void show(std::vector<Row> rows);
    // Marks the line of a node, and scrolls to it if `shows`.
    void choose(const Node& node, bool shows);
    const std::vector<Row>& getRows() const { return rows_; }

private:
    class Line;

    std::shared_ptr<display::DisplayObject> makeRow(
        std::size_t row, const std::shared_ptr<display::DisplayObject>& recycled);
    void updateRow(std::size_t row);
    // The number of the line of a node; the number of lines if there is none.
    std::size_t indexOf(const Node& node) const;
    bool handle(const display::events::PointerEvent& event);
    bool handle(const display::events::KeyEvent& event);

    Handlers handlers_;
    std::vector<Row> rows_;
    std::unordered_map<std::uint64_t, RowText> shown_;  // by the rows in view
    Node chosen_;
    Node hovered_;
    double width_ = 0;
    std::shared_ptr<display::graphics::Container> container_;
    std::shared_ptr<display::graphics::ListContainer> list_;
    std::shared_ptr<display::graphics::Text> nothing_;
    std::shared_ptr<display::events::PointerEvent::listener_type> pointer_;
    std::shared_ptr<display::events::KeyEvent::listener_type> keys_;
};

}  // namespace orvane::inspector
