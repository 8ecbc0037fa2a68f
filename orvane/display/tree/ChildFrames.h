#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "orvane/display/geometry/Rect.h"
#include "orvane/display/tree/DisplayObject.h"

namespace orvane::display {

class ContainerObject;

// The frames of the children of one container with many children, kept so that a change of one
// child costs the work for one child: the union of the frames of the visible children, and a grid
// that finds the children that touch a rectangle.
//
// The container owns it and reports every child that it stores or erases; DisplayObject::resetFrame
// reports every frame that is reset. The work is deferred until the union or the children are
// queried. Children whose frames did not change are not visited.
class ChildFrames {
public:
    using Rect = geometry::Rect<double>;

    // Containers with fewer children have no ChildFrames: for them a loop is cheaper than a grid.
    static constexpr std::size_t kWorthwhile = 48;

    explicit ChildFrames(const ContainerObject& container);

    // The container has stored `child`, which is borrowed until it is removed.
    void add(DisplayObject& child);
    // The container is about to erase `child`.
    void remove(DisplayObject& child);
    // The frame of `child` was reset.
    void reset(DisplayObject& child);

    // The union of the frames of the children, in screen coordinates: exactly what a walk over the
    // children of a visible container gives. The visibility of the container and its ancestors does
    // not count, because their changes are not reported here.
    Rect unionOfFrames();

    // A margin that includes those of all children, after unionOfFrames().
    const DisplayObject::InkMargin& inkMargin() const { return inkMargin_; }

    // The children that painting `painted` (screen coordinates) can concern, in drawing order. Null
    // when it covers most of the container, where walking all children costs less. The result
    // is valid until the next call.
    const std::vector<DisplayObject*>* touching(const Rect& painted);

private:
    struct Entry {
        Rect frame;
        DisplayObject* object = nullptr;
        std::uint64_t query = 0;  // the last query that found it
        bool pending = false;
        bool counted = false;  // in the union
        enum class Place : std::uint8_t { Nowhere, Cells, Everywhere } place = Place::Nowhere;
    };
    struct CellRange {
        int left, top, right, bottom;  // inclusive
    };

    void refresh();
    void refreshEntry(std::uint32_t slot);
    void count(std::uint32_t slot);
    void uncount(std::uint32_t slot);
    void widenInk(const DisplayObject& child);
    void widenUnion(const Rect& frame, bool first);
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

    // The edges of the union of the counted entries.
    double left_ = 0, top_ = 0, right_ = 0, bottom_ = 0;
    std::size_t counted_ = 0;
    std::uint32_t countedSlots_ = 0;  // the exclusive or of their slots: of one entry, its slot
    bool unionStale_ = false;
    DisplayObject::InkMargin inkMargin_;

    Rect gridArea_;
    double cellWidth_ = 1, cellHeight_ = 1;
    int columns_ = 0, rows_ = 0;
    std::size_t gridBuiltFor_ = 0;
    bool gridStale_ = true;
    std::vector<std::vector<std::uint32_t>> cells_;
    // Children that every query visits: those that are too large for the grid, that are not finite,
    // or of a kind whose validate must run wherever the object is.
    std::vector<std::uint32_t> everywhere_;

    std::uint64_t query_ = 0;
    std::vector<DisplayObject*> found_;
};

}  // namespace orvane::display
