#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "platform/coregraphics/CGGeometry.h"
#include "platform/raster/Mask.h"

namespace orvane::platform {

// Computes the coverage of a union of convex polygons in the area of a mask.
//
// Made for wide strokes of many short lines, whose strips and wedges overlap: nearly all of their
// edges lie inside the stroke. A general rasterizer visits each edge in each of its sample rows.
// This one knows which part of a pixel row is full already, and skips the polygons there.
class ConvexUnion {
public:
    // Makes the union empty, for an area of at most Mask::kSide pixels in each direction.
    void begin(int width, int height);
    // Adds a polygon of three or four finite corners in order, in either direction, in pixels.
    void add(std::span<const CGPoint> corners);
    // Writes one byte for each pixel, with rows `stride` bytes apart. `opacity` is that of full
    // coverage.
    void write(std::uint8_t* coverage, std::ptrdiff_t stride, double opacity) const;

private:
    // Coverage is exact along x and sampled along y, in this number of rows for each pixel.
    static constexpr int kSamples = 16;
    // The unit of positions along x, as a share of a pixel.
    static constexpr int kUnits = 256;

    // From `left` to `right`, in units.
    struct Interval {
        std::int32_t left = 0;
        std::int32_t right = 0;
    };
    // An edge of a polygon, downward.
    struct Edge {
        CGPoint top;
        double bottom;
        double slope;
        double at(double y) const { return top.x + (y - top.y) * slope; }
    };
    using Intervals = std::vector<Interval>;  // disjoint, from left to right

    void addRow(int row, std::span<const Edge> edges);
    static void insert(Intervals& intervals, Interval added);
    void growSolid(int row, std::int32_t inside);

    int width_ = 0;
    int height_ = 0;
    std::array<Intervals, std::size_t{Mask::kSide} * kSamples> samples_;
    // The part of each pixel row that is full: the same interval in each of its sample rows.
    std::array<Interval, Mask::kSide> solid_;
    // The extent of the present polygon in each pixel row.
    std::array<double, Mask::kSide> left_;
    std::array<double, Mask::kSide> right_;
};

}  // namespace orvane::platform
