#include "orvane/display/tree/ChildFrames.h"

#include <algorithm>
#include <cmath>

#include "orvane/display/tree/ContainerObject.h"
#include "orvane/display/tree/ParentVisibilityScope.h"

namespace orvane::display {

namespace {

constexpr double kChildrenPerCell = 2;
constexpr int kMaxCellsOfOneChild = 32;
constexpr int kMaxSide = 1024;

// The cell of a coordinate. Coordinates beyond the edge of the grid belong to the outermost cells.
int cellAt(double offset, double cellSize, int count) {
    return static_cast<int>(std::clamp(std::floor(offset / cellSize), 0.0, count - 1.0));
}

}  // namespace

ChildFrames::ChildFrames(const ContainerObject& container) : container_(container) {
    entries_.reserve(container.getChildren().size());
    for (const std::shared_ptr<DisplayObject>& child : container.getChildren()) {
        add(*child);
    }
}

void ChildFrames::add(DisplayObject& child) {
    std::uint32_t slot = 0;
    if (freeSlots_.empty()) {
        slot = static_cast<std::uint32_t>(entries_.size());
        entries_.emplace_back();
    } else {
        slot = freeSlots_.back();
        freeSlots_.pop_back();
    }
    // If the slot was freed while it was pending, it is still listed in pending_.
    entries_[slot].object = &child;
    child.frameSlot_ = slot;
    ++live_;
    reset(child);
}

void ChildFrames::remove(DisplayObject& child) {
    const std::uint32_t slot = child.frameSlot_;
    removeFromGrid(slot);
    uncount(slot);
    entries_[slot].object = nullptr;
    freeSlots_.push_back(slot);
    --live_;
}

void ChildFrames::reset(DisplayObject& child) {
    const std::uint32_t slot = child.frameSlot_;
    if (slot < entries_.size() && entries_[slot].object == &child && !entries_[slot].pending) {
        entries_[slot].pending = true;
        pending_.push_back(slot);
    }
}

void ChildFrames::refresh() {
    if (!pending_.empty()) {
        const DisplayObject::ParentVisibilityScope scope(container_, true);
        for (const std::uint32_t slot : pending_) {
            refreshEntry(slot);
        }
        pending_.clear();
    }
    if (unionStale_) {
        recomputeUnion();
    }
}

void ChildFrames::refreshEntry(std::uint32_t slot) {
    Entry& entry = entries_[slot];
    entry.pending = false;
    if (entry.object == nullptr) {
        return;
    }
    const Rect frame = entry.object->getFrame();
    uncount(slot);
    if (!gridStale_) {
        removeFromGrid(slot);
    }
    entry.frame = frame;
    widenInk(*entry.object);
    if (entry.object->isVisible() && !frame.cutToReach().isEmpty()) {
        count(slot);
    }
    if (!gridStale_) {
        insertIntoGrid(slot);
    }
}

void ChildFrames::count(std::uint32_t slot) {
    entries_[slot].counted = true;
    countedSlots_ ^= slot;
    ++counted_;
    widenUnion(entries_[slot].frame.cutToReach(), counted_ == 1);
}

void ChildFrames::uncount(std::uint32_t slot) {
    Entry& entry = entries_[slot];
    if (!entry.counted) {
        return;
    }
    entry.counted = false;
    countedSlots_ ^= slot;
    --counted_;
    const Rect old = entry.frame.cutToReach();
    unionStale_ = unionStale_ || old.x <= left_ || old.y <= top_ || old.x + old.width >= right_ ||
                  old.y + old.height >= bottom_;
}

void ChildFrames::widenInk(const DisplayObject& child) {
    inkMargin_.widen(child.inkMargin_);
}

void ChildFrames::widenUnion(const Rect& frame, bool first) {
    const double right = frame.x + frame.width;
    const double bottom = frame.y + frame.height;
    left_ = first ? frame.x : std::min(left_, frame.x);
    top_ = first ? frame.y : std::min(top_, frame.y);
    right_ = first ? right : std::max(right_, right);
    bottom_ = first ? bottom : std::max(bottom_, bottom);
}

void ChildFrames::recomputeUnion() {
    bool first = true;
    inkMargin_ = {};
    for (const Entry& entry : entries_) {
        if (entry.object != nullptr) {
            widenInk(*entry.object);
        }
        if (entry.counted) {
            widenUnion(entry.frame.cutToReach(), first);
            first = false;
        }
    }
    unionStale_ = false;
}

auto ChildFrames::unionOfFrames() -> Rect {
    refresh();
    if (counted_ > 1) {
        return {left_, top_, right_ - left_, bottom_ - top_};
    }
    if (counted_ == 1) {
        return entries_[countedSlots_].frame.cutToReach();
    }
    // A union of empty frames only is the last of them.
    const DisplayObject::ParentVisibilityScope scope(container_, true);
    const auto& children = container_.getChildren();
    const auto last = std::find_if(children.rbegin(), children.rend(),
                                   [](const auto& child) { return child->isVisible(); });
    return last != children.rend() ? (*last)->getFrame().cutToReach() : Rect();
}

auto ChildFrames::touching(const Rect& painted) -> const std::vector<DisplayObject*>* {
    refresh();
    // A child is found where its frame is, and paints where its ink is.
    const Rect rect = DisplayObject::withMargin(painted, inkMargin_);
    const double area = counted_ == 0 ? 0 : (right_ - left_) * (bottom_ - top_);
    if (!rect.isWithinReach() || rect.width * rect.height * 2 > area) {
        return nullptr;
    }
    if (gridStale_ || live_ > 2 * gridBuiltFor_) {
        rebuildGrid();
    }
    ++query_;
    found_.clear();
    const auto meet = [&](std::uint32_t slot) {
        Entry& entry = entries_[slot];
        if (entry.query != query_ && (entry.frame.touches(rect) || !entry.object->culledByFrame_)) {
            entry.query = query_;
            found_.push_back(entry.object);
        }
    };
    const CellRange range = cellsOf(rect);
    for (int row = range.top; row <= range.bottom; ++row) {
        for (int column = range.left; column <= range.right; ++column) {
            for (const std::uint32_t slot : cell(column, row)) {
                meet(slot);
            }
        }
    }
    for (const std::uint32_t slot : everywhere_) {
        meet(slot);
    }
    std::sort(found_.begin(), found_.end(), [](const DisplayObject* a, const DisplayObject* b) {
        return a->getIndex() < b->getIndex();
    });
    return &found_;
}

void ChildFrames::rebuildGrid() {
    gridArea_ = {left_, top_, right_ - left_, bottom_ - top_};
    const double cells = std::max(1.0, static_cast<double>(live_) / kChildrenPerCell);
    const double width = std::max(gridArea_.width, 1.0);
    const double height = std::max(gridArea_.height, 1.0);
    const double side = std::sqrt(width * height / cells);
    columns_ = static_cast<int>(std::clamp(std::ceil(width / side), 1.0, double{kMaxSide}));
    rows_ = static_cast<int>(std::clamp(std::ceil(height / side), 1.0, double{kMaxSide}));
    cellWidth_ = width / columns_;
    cellHeight_ = height / rows_;
    for (std::vector<std::uint32_t>& each : cells_) {
        each.clear();
    }
    cells_.resize(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_));
    everywhere_.clear();
    gridStale_ = false;
    gridBuiltFor_ = std::max(live_, kWorthwhile);
    for (std::uint32_t slot = 0; slot < entries_.size(); ++slot) {
        entries_[slot].place = Entry::Place::Nowhere;
        if (entries_[slot].object != nullptr) {
            insertIntoGrid(slot);
        }
    }
}

auto ChildFrames::cellsOf(const Rect& rect) const -> CellRange {
    return {cellAt(rect.x - gridArea_.x, cellWidth_, columns_),
            cellAt(rect.y - gridArea_.y, cellHeight_, rows_),
            cellAt(rect.x + rect.width - gridArea_.x, cellWidth_, columns_),
            cellAt(rect.y + rect.height - gridArea_.y, cellHeight_, rows_)};
}

void ChildFrames::insertIntoGrid(std::uint32_t slot) {
    Entry& entry = entries_[slot];
    if (entry.frame.isWithinReach() && entry.object->culledByFrame_) {
        const CellRange range = cellsOf(entry.frame.normalized());
        const int covered = (range.right - range.left + 1) * (range.bottom - range.top + 1);
        if (covered <= kMaxCellsOfOneChild) {
            for (int row = range.top; row <= range.bottom; ++row) {
                for (int column = range.left; column <= range.right; ++column) {
                    cell(column, row).push_back(slot);
                }
            }
            entry.place = Entry::Place::Cells;
            return;
        }
    }
    everywhere_.push_back(slot);
    entry.place = Entry::Place::Everywhere;
}

void ChildFrames::removeFromGrid(std::uint32_t slot) {
    Entry& entry = entries_[slot];
    const auto takeFrom = [slot](std::vector<std::uint32_t>& slots) {
        const auto found = std::find(slots.begin(), slots.end(), slot);
        if (found != slots.end()) {
            *found = slots.back();
            slots.pop_back();
        }
    };
    if (entry.place == Entry::Place::Everywhere) {
        takeFrom(everywhere_);
    } else if (entry.place == Entry::Place::Cells) {
        const CellRange range = cellsOf(entry.frame.normalized());
        for (int row = range.top; row <= range.bottom; ++row) {
            for (int column = range.left; column <= range.right; ++column) {
                takeFrom(cell(column, row));
            }
        }
    }
    entry.place = Entry::Place::Nowhere;
}

}  // namespace orvane::display
