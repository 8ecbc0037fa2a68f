#include "platform/appkit/NSDamageRegion.h"

#include <algorithm>
#include <cstddef>

namespace orvane::platform {

namespace {

// Beyond so many separate rectangles the list turns to a grid.
constexpr std::size_t listLimit = 128;
// Rectangles nearly touch when no more pixels than this lie between them.
constexpr std::int64_t nearby = 8;
// What a box may hold of pixels that were not damaged: as much as a call to paint them costs
// anyway, or a share of what was.
constexpr std::int64_t wasteAllowed = 32 * 32;
constexpr std::int64_t wasteShare = 4;
constexpr std::int64_t smallestCell = 64;
constexpr std::int64_t cellLimit = 1024;

bool areWorthMerging(const NSBackingRect& a, const NSBackingRect& b) {
    if (a.left > b.right + nearby || b.left > a.right + nearby || a.top > b.bottom + nearby ||
        b.top > a.bottom + nearby) {
        return false;
    }
    const std::int64_t damaged = a.area() + b.area() - a.intersection(b).area();
    return a.united(b).area() - damaged <= std::max(wasteAllowed, damaged / wasteShare);
}

}  // namespace

void NSDamageRegion::setBounds(const NSBackingRect& bounds) {
    if (bounds == bounds_) {
        return;
    }
    std::vector<NSBackingRect> kept;
    take(kept);
    bounds_ = bounds;
    for (const NSBackingRect& rect : kept) {
        add(rect);
    }
}

void NSDamageRegion::add(const NSBackingRect& rect) {
    const NSBackingRect inside = rect.intersection(bounds_);
    if (inside.isEmpty()) {
        return;
    }
    if (gridded_) {
        addToGrid(inside);
        return;
    }
    addToList(inside);
    if (rects_.size() > listLimit) {
        turnToGrid();
    }
}

void NSDamageRegion::addToList(NSBackingRect rect) {
    for (const NSBackingRect& other : rects_) {
        if (other.contains(rect)) {
            return;
        }
    }
    // Growing, it may come to reach others in turn.
    for (std::size_t i = 0; i < rects_.size();) {
        if (!areWorthMerging(rects_[i], rect)) {
            ++i;
            continue;
        }
        rect = rects_[i].united(rect);
        rects_[i] = rects_.back();
        rects_.pop_back();
        i = 0;
    }
    rects_.push_back(rect);
}

void NSDamageRegion::turnToGrid() {
    cellSize_ = smallestCell;
    const auto cellsFor = [this](std::int64_t extent) { return extent / cellSize_ + 1; };
    while (cellsFor(bounds_.width()) * cellsFor(bounds_.height()) > cellLimit) {
        cellSize_ *= 2;
    }
    columns_ = cellsFor(bounds_.width());
    cells_.assign(static_cast<std::size_t>(columns_ * cellsFor(bounds_.height())), {});
    covered_ = {};
    gridded_ = true;
    for (const NSBackingRect& rect : rects_) {
        addToGrid(rect);
    }
    rects_.clear();
}

void NSDamageRegion::addToGrid(const NSBackingRect& rect) {
    // Where everything is damaged again and again, it is not counted cell by cell each time.
    if (covered_.contains(rect)) {
        return;
    }
    if (rect.area() > covered_.area()) {
        covered_ = rect;
    }
    const NSBackingRect place = rect.movedBy(-bounds_.left, -bounds_.top);
    for (std::int64_t line = place.top / cellSize_; line <= (place.bottom - 1) / cellSize_;
         ++line) {
        for (std::int64_t column = place.left / cellSize_; column <= (place.right - 1) / cellSize_;
             ++column) {
            const std::int64_t x = bounds_.left + column * cellSize_;
            const std::int64_t y = bounds_.top + line * cellSize_;
            NSBackingRect& cell = cells_[static_cast<std::size_t>(line * columns_ + column)];
            cell = cell.united(rect.intersection({x, y, x + cellSize_, y + cellSize_}));
        }
    }
}

void NSDamageRegion::mergeGrid(std::vector<NSBackingRect>& out) const {
    // Each line of cells is joined to runs, and each run to what the line before left open: boxes
    // that end further up cannot be reached any more.
    std::size_t openFrom = 0;
    for (std::size_t lineBegin = 0; lineBegin < cells_.size();
         lineBegin += static_cast<std::size_t>(columns_)) {
        const std::size_t previousOpen = openFrom;
        const std::size_t previousEnd = out.size();
        NSBackingRect run;
        const auto finish = [&] {
            if (run.isEmpty()) {
                return;
            }
            for (std::size_t i = previousOpen; i < previousEnd; ++i) {
                if (!out[i].isEmpty() && areWorthMerging(out[i], run)) {
                    run = run.united(out[i]);
                    out[i] = {};
                }
            }
            out.push_back(run);
            run = {};
        };
        for (std::size_t i = 0; i < static_cast<std::size_t>(columns_); ++i) {
            const NSBackingRect& cell = cells_[lineBegin + i];
            if (!run.isEmpty() && !cell.isEmpty() && areWorthMerging(run, cell)) {
                run = run.united(cell);
            } else if (!cell.isEmpty()) {
                finish();
                run = cell;
            }
        }
        finish();
        openFrom = previousEnd;
    }
    std::erase_if(out, [](const NSBackingRect& rect) { return rect.isEmpty(); });
}

void NSDamageRegion::clear() {
    rects_.clear();
    cells_.clear();
    gridded_ = false;
}

void NSDamageRegion::take(std::vector<NSBackingRect>& out) {
    out.clear();
    if (gridded_) {
        mergeGrid(out);
        // Lines of cells are joined greedily; what they left side by side is joined as in the list.
        if (out.size() <= listLimit) {
            for (const NSBackingRect& rect : out) {
                addToList(rect);
            }
            out.swap(rects_);
        }
    } else {
        out.swap(rects_);
    }
    clear();
}

}  // namespace orvane::platform
