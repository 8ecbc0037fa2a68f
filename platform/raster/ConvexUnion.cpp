#include "platform/raster/ConvexUnion.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orvane::platform {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

int rowOf(double y, int height) {
    return static_cast<int>(std::clamp(y, -1.0, static_cast<double>(height)) + 1) - 1;
}

}  // namespace

void ConvexUnion::begin(int width, int height) {
    // Only the rows of the last area may contain something.
    for (std::size_t i = 0; i < static_cast<std::size_t>(height_) * kSamples; ++i) {
        samples_[i].clear();
    }
    width_ = width;
    height_ = height;
    solid_.fill({});
}

void ConvexUnion::add(std::span<const CGPoint> corners) {
    std::array<Edge, 4> storage;
    std::size_t count = 0;
    double top = kInfinity;
    double bottom = -kInfinity;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        CGPoint p = corners[i];
        CGPoint q = corners[(i + 1) % corners.size()];
        if (p.y > q.y) {
            std::swap(p, q);
        }
        top = std::min(top, p.y);
        bottom = std::max(bottom, q.y);
        if (p.y < q.y) {
            storage[count++] = {p, q.y, (q.x - p.x) / (q.y - p.y)};
        }
    }
    const int first = std::max(0, rowOf(top, height_));
    const int end = std::min(height_, rowOf(bottom, height_) + 1);
    if (first >= end) {
        return;
    }
    std::fill(left_.begin() + first, left_.begin() + end, kInfinity);
    std::fill(right_.begin() + first, right_.begin() + end, -kInfinity);
    const std::span<const Edge> edges(storage.data(), count);
    for (const Edge& edge : edges) {
        const int edgeEnd = std::min(end, rowOf(edge.bottom, height_) + 1);
        int row = std::max(first, rowOf(edge.top.y, height_));
        double x = edge.at(std::max(edge.top.y, static_cast<double>(row)));
        for (; row < edgeEnd; ++row) {
            const double next = edge.at(std::min(edge.bottom, row + 1.0));
            const auto at = static_cast<std::size_t>(row);
            left_[at] = std::min({left_[at], x, next});
            right_[at] = std::max({right_[at], x, next});
            x = next;
        }
    }
    for (int row = first; row < end; ++row) {
        const auto at = static_cast<std::size_t>(row);
        const double left = std::max(0.0, left_[at]) * kUnits;
        const double right = std::min(static_cast<double>(width_), right_[at]) * kUnits;
        if (left < right && (left < solid_[at].left || right > solid_[at].right)) {
            addRow(row, edges);
        }
    }
}

void ConvexUnion::addRow(int row, std::span<const Edge> edges) {
    std::array<double, kSamples> left;
    std::array<double, kSamples> right;
    left.fill(kInfinity);
    right.fill(-kInfinity);
    for (const Edge& edge : edges) {
        // The sample rows between two heights are those whose centers are.
        const auto sampleOf = [&](double y) {
            return static_cast<int>(std::clamp((y - row) * kSamples + 0.5, 0.0, kSamples + 0.5));
        };
        const double slope = edge.slope / kSamples;
        const double x = edge.at(row + 0.5 / kSamples);
        const int end = sampleOf(edge.bottom);
        for (int i = sampleOf(edge.top.y); i < end; ++i) {
            const double at = x + i * slope;
            const auto sample = static_cast<std::size_t>(i);
            left[sample] = at < left[sample] ? at : left[sample];
            right[sample] = at > right[sample] ? at : right[sample];
        }
    }
    const double limit = width_;
    const auto toUnits = [&](double x) {
        const double inside = x < 0 ? 0 : x > limit ? limit : x;
        return static_cast<std::int32_t>(inside * kUnits + 0.5);
    };
    Intervals* const samples = &samples_[static_cast<std::size_t>(row) * kSamples];
    std::int32_t inside = -1;
    for (std::size_t i = 0; i < kSamples; ++i) {
        const Interval added{toUnits(left[i]), toUnits(right[i])};
        if (added.left < added.right) {
            insert(samples[i], added);
            inside = added.left + (added.right - added.left) / 2;
        }
    }
    if (inside >= 0) {
        growSolid(row, inside);
    }
}

void ConvexUnion::insert(Intervals& intervals, Interval added) {
    // Intervals that touch, up to rounding, are joined.
    auto first = intervals.begin();
    while (first != intervals.end() && first->right + 1 < added.left) {
        ++first;
    }
    auto end = first;
    while (end != intervals.end() && end->left <= added.right + 1) {
        added.left = std::min(added.left, end->left);
        added.right = std::max(added.right, end->right);
        ++end;
    }
    if (first == end) {
        intervals.insert(first, added);
    } else {
        *first = added;
        intervals.erase(first + 1, end);
    }
}

// Sets the full part of a row to the one around a position, if it is larger.
void ConvexUnion::growSolid(int row, std::int32_t inside) {
    Interval common{0, width_ * kUnits};
    const Intervals* const samples = &samples_[static_cast<std::size_t>(row) * kSamples];
    for (int i = 0; i < kSamples; ++i) {
        const auto around = std::ranges::find_if(
            samples[i], [&](const Interval& each) { return each.right >= inside; });
        if (around == samples[i].end() || around->left > inside) {
            return;
        }
        common.left = std::max(common.left, around->left);
        common.right = std::min(common.right, around->right);
    }
    Interval& solid = solid_[static_cast<std::size_t>(row)];
    if (common.right - common.left > solid.right - solid.left) {
        solid = common;
    }
}

void ConvexUnion::write(std::uint8_t* coverage, std::ptrdiff_t stride, double opacity) const {
    constexpr int kFull = kSamples * kUnits;
    // The share of each possible coverage of a pixel, in bytes.
    std::array<std::uint8_t, kFull + 1> bytes;
    for (int i = 0; i <= kFull; ++i) {
        bytes[static_cast<std::size_t>(i)] =
            static_cast<std::uint8_t>(std::lround(255.0 * opacity * i / kFull));
    }
    // The change of the coverage from each pixel to the next.
    std::array<std::int32_t, Mask::kSide + 2> changes;
    for (int row = 0; row < height_; ++row, coverage += stride) {
        changes.fill(0);
        const auto change = [&](std::int32_t x, int sign) {
            const auto pixel = static_cast<std::size_t>(x / kUnits);
            const std::int32_t part = x % kUnits;
            changes[pixel] += sign * (kUnits - part);
            changes[pixel + 1] += sign * part;
        };
        for (int i = 0; i < kSamples; ++i) {
            for (const Interval& each :
                 samples_[static_cast<std::size_t>(row) * kSamples + static_cast<std::size_t>(i)]) {
                change(each.left, 1);
                change(each.right, -1);
            }
        }
        std::int32_t sum = 0;
        for (int x = 0; x < width_; ++x) {
            sum += changes[static_cast<std::size_t>(x)];
            coverage[x] = bytes[static_cast<std::size_t>(sum)];
        }
    }
}

}  // namespace orvane::platform
