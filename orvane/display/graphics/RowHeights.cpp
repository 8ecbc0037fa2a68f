#include "orvane/display/graphics/RowHeights.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvane::display::graphics {

namespace {

double usable(double height) {
    return std::isfinite(height) ? std::max(height, 1.0) : 1;
}

}  // namespace

void RowHeights::setEqual(double height) {
    equal_ = usable(height);
    function_ = nullptr;
    blocks_.clear();
}

void RowHeights::setFunction(std::function<double(std::size_t)> heightOf) {
    function_ = std::move(heightOf);
    reset(count_);
}

double RowHeights::heightOf(std::size_t row) const {
    return usable(function_(row));
}

double RowHeights::heightOf(std::size_t row, std::size_t count) const {
    double sum = 0;
    for (std::size_t i = row; i < row + count; ++i) {
        sum += heightOf(i);
    }
    return sum;
}

// ---- changes ----

void RowHeights::reset(std::size_t count) {
    count_ = count;
    blocks_.clear();
    if (!function_) {
        return;
    }
    blocks_.reserve(count / kBlock + 1);
    for (std::size_t row = 0; row < count; row += kBlock) {
        const std::size_t rows = std::min(kBlock, count - row);
        blocks_.push_back({rows, heightOf(row, rows)});
    }
}

void RowHeights::insert(std::size_t row, std::size_t count) {
    count_ += count;
    if (!function_ || count == 0) {
        return;
    }
    if (blocks_.empty()) {
        return reset(count_);
    }
    const Place place = placeOf(row);
    Block& block = blocks_[place.block];
    block.count += count;
    block.height += heightOf(row, count);
    divide(place);
}

void RowHeights::divide(const Place& place) {
    const std::size_t rows = blocks_[place.block].count;
    if (rows <= 2 * kBlock) {
        return;
    }
    std::vector<Block> parts;
    for (std::size_t i = 0; i < rows; i += kBlock) {
        const std::size_t part = std::min(kBlock, rows - i);
        parts.push_back({part, heightOf(place.first + i, part)});
    }
    const auto at = blocks_.begin() + static_cast<std::ptrdiff_t>(place.block);
    blocks_.insert(blocks_.erase(at), parts.begin(), parts.end());
}

void RowHeights::remove(std::size_t row, std::size_t count) {
    count_ -= count;
    if (!function_) {
        return;
    }
    // The function knows only the rows that are left, so the blocks that lose some of their rows
    // are summed up again.
    for (Place place = placeOf(row); count > 0;) {
        Block& block = blocks_[place.block];
        const std::size_t before = row - place.first;
        const std::size_t removed = std::min(count, block.count - before);
        block.count -= removed;
        count -= removed;
        if (block.count == 0) {
            blocks_.erase(blocks_.begin() + static_cast<std::ptrdiff_t>(place.block));
        } else {
            block.height = heightOf(place.first, block.count);
            place.first += block.count;
            ++place.block;
        }
    }
}

void RowHeights::change(std::size_t row, std::size_t count) {
    if (!function_) {
        return;
    }
    Place place = placeOf(row);
    for (; place.first < row + count; ++place.block) {
        Block& block = blocks_[place.block];
        block.height = heightOf(place.first, block.count);
        place.first += block.count;
    }
}

// ---- queries ----

auto RowHeights::placeOf(std::size_t row) const -> Place {
    Place place;
    while (place.block + 1 < blocks_.size() && place.first + blocks_[place.block].count <= row) {
        place.first += blocks_[place.block].count;
        place.offset += blocks_[place.block].height;
        ++place.block;
    }
    return place;
}

double RowHeights::offsetOf(std::size_t row) const {
    if (!function_) {
        return static_cast<double>(row) * equal_;
    }
    if (blocks_.empty()) {
        return 0;
    }
    const Place place = placeOf(row);
    const Block& block = blocks_[place.block];
    return place.offset + (row == place.first + block.count
                               ? block.height
                               : heightOf(place.first, row - place.first));
}

std::size_t RowHeights::rowAt(double offset) const {
    if (!function_) {
        const double row = std::floor(std::max(offset, 0.0) / equal_);
        return static_cast<std::size_t>(std::min(row, static_cast<double>(count_ - 1)));
    }
    Place place;
    while (place.block + 1 < blocks_.size() &&
           place.offset + blocks_[place.block].height <= offset) {
        place.first += blocks_[place.block].count;
        place.offset += blocks_[place.block].height;
        ++place.block;
    }
    std::size_t row = place.first;
    for (double end = place.offset + heightOf(row); row + 1 < count_ && end <= offset;) {
        end += heightOf(++row);
    }
    return row;
}

}  // namespace orvane::display::graphics
