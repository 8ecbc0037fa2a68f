#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "orvane/display/geometry/Rect.h"

namespace orvane::display {

class ContainerObject;
class DisplayObject;

// What a container with many children keeps of their frames, so that one child's change costs one
// child: the union of the visible ones, and a grid that finds those that touch a rectangle.
//
// The container tells it of every child stored and erased, DisplayObject::resetFrame of every frame
// forgotten; the work is done when the union or the children are asked for. A child whose frame is
// known to its parent and unchanged is never looked at.
class ChildFrames {
public:
    using Rect = geometry::Rect<double>;

    // Containers with fewer children are walked: for them a loop is cheaper than a grid.
    static constexpr std::size_t kWorthwhile = 48;

    explicit ChildFrames(const ContainerObject& container);

    void add(DisplayObject& child);
    void remove(DisplayObject& child);
    void reset(DisplayObject& child);

    // The union of the visible children's frames.
    Rect unionOfFrames();

    // The children that a paint of `rect` can concern, in drawing order. Null when that is most of
    // them, and walking them all costs less. The answer is good until the next call.
    const std::vector<DisplayObject*>* touching(const Rect& rect);

private:
    struct Entry {
        Rect frame;
        DisplayObject* object = nullptr;
        std::uint64_t query = 0;  // the last query that met it
        bool pending = false;
        bool counted = false;  // in the union
        enum class Place : std::uint8_t { Nowhere, Cells, Everywhere } place = Place::Nowhere;
    };
    struct CellRange {
        int left, top, right, bottom;  // inclusive
    };

    void refresh();
    void refreshEntry(std::uint32_t slot, bool parentVisible);
    void recomputeUnion();
    void rebuildGrid();
    void insertIntoGrid(std::uint32_t slot);
    void removeFromGrid(std::uint32_t slot);
    CellRange cellsOf(const Rect& rect) const;
    std::vector<std::uint32_t>& cell(int column, int row) {
        return cells_[static_cast<std::size_t>(row * columns_ + column)];
    }

    const ContainerObject& container_;
    std::vector<Entry> entries_;
    std::vector<std::uint32_t> freeSlots_;
    std::vector<std::uint32_t> pending_;
    std::size_t live_ = 0;

    // Edges of the union; kept as edges, so that an unchanged edge stays the same number.
    double left_ = 0, top_ = 0, right_ = 0, bottom_ = 0;
    std::size_t counted_ = 0;
    bool unionStale_ = false;

    Rect gridArea_;
    double cellWidth_ = 1, cellHeight_ = 1;
    int columns_ = 0, rows_ = 0;
    std::size_t gridBuiltFor_ = 0;
    bool gridStale_ = true;
    std::vector<std::vector<std::uint32_t>> cells_;
    // Children that every query meets: too large for the grid, not finite, or of a kind that is to
    // be validated wherever it is.
    std::vector<std::uint32_t> everywhere_;

    std::uint64_t query_ = 0;
    std::vector<DisplayObject*> found_;
};

}  // namespace orvane::display
