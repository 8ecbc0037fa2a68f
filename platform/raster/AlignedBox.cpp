#include "platform/raster/AlignedBox.h"

#include <algorithm>
#include <cmath>

#include "platform/raster/Mask.h"

namespace orvane::platform {

namespace {

constexpr std::int64_t kUnit = 256;

int floorPixel(std::int64_t value) {
    return static_cast<int>(value >> 8);
}

int ceilPixel(std::int64_t value) {
    return static_cast<int>((value + kUnit - 1) >> 8);
}

}  // namespace

AlignedBox::Interval AlignedBox::interval(double from, double to) {
    const auto fixed = [](double value) {
        return std::llrint(std::clamp(value, -1e6, 1e6) * static_cast<double>(kUnit));
    };
    return {fixed(std::min(from, to)), fixed(std::max(from, to))};
}

AlignedBox::AlignedBox(CGPoint min, CGPoint max)
    : box_{interval(min.x, max.x), interval(min.y, max.y)} {}

void AlignedBox::setHole(CGPoint min, CGPoint max) {
    hole_ = Box{interval(min.x, max.x), interval(min.y, max.y)};
}

PixelRect AlignedBox::bounds() const {
    if (box_.x.from == box_.x.to || box_.y.from == box_.y.to) {
        return {};
    }
    return {floorPixel(box_.x.from), floorPixel(box_.y.from), ceilPixel(box_.x.to),
            ceilPixel(box_.y.to)};
}

PixelRect AlignedBox::covered() const {
    if (hole_) {
        return {};
    }
    return {ceilPixel(box_.x.from), ceilPixel(box_.y.from), floorPixel(box_.x.to),
            floorPixel(box_.y.to)};
}

// Divides first..end into runs of constant coverage. Coverage changes only at the pixels that
// contain an edge of the box or of the hole.
AlignedBox::Runs AlignedBox::runsOf(const Interval& box, const Interval* hole, int first, int end) {
    int cuts[8];
    int count = 0;
    // The edges come in ascending order, but several may be in the same pixel.
    const auto cutAround = [&](std::int64_t edge) {
        for (const int cut : {floorPixel(edge), ceilPixel(edge)}) {
            cuts[count] = count > 0 ? std::max(cut, cuts[count - 1]) : cut;
            ++count;
        }
    };
    cutAround(box.from);
    if (hole != nullptr) {
        cutAround(hole->from);
        cutAround(hole->to);
    }
    cutAround(box.to);

    const auto overlap = [](const Interval& interval, int from, int to) {
        const std::int64_t taken =
            std::min(interval.to, to * kUnit) - std::max(interval.from, from * kUnit);
        return static_cast<std::uint32_t>(std::max<std::int64_t>(taken, 0) / (to - from));
    };
    Runs result;
    for (int i = 0; i + 1 < count; ++i) {
        const int from = std::max(cuts[i], first);
        const int to = std::min(cuts[i + 1], end);
        if (from < to) {
            result.runs[result.count++] = {from, to, overlap(box, from, to),
                                           hole != nullptr ? overlap(*hole, from, to) : 0};
        }
    }
    return result;
}

template <typename Visit>
void AlignedBox::forEachCell(const PixelRect& area, Visit visit) const {
    const Runs columns = runsOf(box_.x, hole_ ? &hole_->x : nullptr, area.left, area.right);
    const Runs rows = runsOf(box_.y, hole_ ? &hole_->y : nullptr, area.top, area.bottom);
    for (int j = 0; j < rows.count; ++j) {
        const Run& row = rows.runs[j];
        for (int i = 0; i < columns.count; ++i) {
            const Run& column = columns.runs[i];
            const std::uint32_t covered = column.box * row.box - column.hole * row.hole;
            visit(PixelRect{column.first, row.first, column.end, row.end},
                  (covered * 255 + 0x8000) >> 16);
        }
    }
}

void AlignedBox::paint(const Bitmap& bitmap, const PixelRect& clip, std::uint32_t color) const {
    forEachCell(clip, [&](const PixelRect& cell, std::uint32_t coverage) {
        const std::uint32_t source = scaled(color, coverage);
        if (source == 0) {
            return;
        }
        for (int y = cell.top; y < cell.bottom; ++y) {
            blendSolid(bitmap.at(cell.left, y), cell.width(), source);
        }
    });
}

void AlignedBox::multiply(std::uint8_t* coverage, const PixelRect& area) const {
    const PixelRect inside = area.intersected(bounds());
    Mask::clearOutside(coverage, area, inside);
    forEachCell(inside, [&](const PixelRect& cell, std::uint32_t cellCoverage) {
        for (int y = cell.top; y < cell.bottom; ++y) {
            std::uint8_t* row = coverage + (y - area.top) * Mask::kSide - area.left;
            for (int x = cell.left; x < cell.right; ++x) {
                row[x] = static_cast<std::uint8_t>(scaled(row[x], cellCoverage));
            }
        }
    });
}

}  // namespace orvane::platform
