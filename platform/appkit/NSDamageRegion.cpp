#include "platform/appkit/NSDamageRegion.h"

#include <algorithm>
#include <cstddef>

namespace orvane::platform {

namespace {

// The number of separate rectangles beyond which the list becomes a grid.
constexpr std::size_t kListLimit = 128;
// Rectangles nearly touch if at most this number of pixels is between them.
constexpr std::int64_t kNearby = 8;
// The number of undamaged pixels that a merged box may contain: about as many as one more call of
// drawRect costs, or this share of the damaged pixels (a quarter).
constexpr std::int64_t kWasteAllowed = 32 * 32;
constexpr std::int64_t kWasteShare = 4;
constexpr std::int64_t kSmallestCell = 64;
constexpr std::int64_t kCellLimit = 1024;

bool areWorthMerging(const NSBackingRect& a, const NSBackingRect& b) {
    if (a.left > b.right + kNearby || b.left > a.right + kNearby || a.top > b.bottom + kNearby ||
        b.top > a.bottom + kNearby) {
        return false;
    }
    const std::int64_t damaged = a.area() + b.area() - a.intersection(b).area();
    return a.united(b).area() - damaged <= std::max(kWasteAllowed, damaged / kWasteShare);
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
    if (rects_.size() > kListLimit) {
        switchToGrid();
    }
}

void NSDamageRegion::addToList(NSBackingRect rect) {
    for (const NSBackingRect& other : rects_) {
        if (other.contains(rect)) {
            return;
        }
    }
    // A merged rectangle is larger and may touch others in turn, so the search starts over.
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

void NSDamageRegion::switchToGrid() {
    cellSize_ = kSmallestCell;
    const auto cellsFor = [this](std::int64_t extent) { return extent / cellSize_ + 1; };
    while (cellsFor(bounds_.width()) * cellsFor(bounds_.height()) > kCellLimit) {
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
    // Skips the walk over the cells when the whole area is damaged repeatedly.
    if (covered_.contains(rect)) {
        return;
    }
    if (rect.area() > covered_.area()) {
        covered_ = rect;
    }
    const NSBackingRect place = rect.movedBy(-bounds_.left, -bounds_.top);
    for (std::int64_t row = place.top / cellSize_; row <= (place.bottom - 1) / cellSize_; ++row) {
        for (std::int64_t column = place.left / cellSize_; column <= (place.right - 1) / cellSize_;
             ++column) {
            const std::int64_t x = bounds_.left + column * cellSize_;
            const std::int64_t y = bounds_.top + row * cellSize_;
            NSBackingRect& cell = cells_[static_cast<std::size_t>(row * columns_ + column)];
            cell = cell.united(rect.intersection({x, y, x + cellSize_, y + cellSize_}));
        }
    }
}

void NSDamageRegion::mergeGrid(std::vector<NSBackingRect>& out) const {
    // Joins the cells of each row to runs, and each run to the boxes of the previous row. Boxes
    // that end above the previous row cannot touch the run.
    std::size_t openFrom = 0;
    for (std::size_t rowBegin = 0; rowBegin < cells_.size();
         rowBegin += static_cast<std::size_t>(columns_)) {
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
            const NSBackingRect& cell = cells_[rowBegin + i];
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
        // Rows are joined greedily, which can leave neighbors that are worth merging.
        if (out.size() <= kListLimit) {
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
