#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "orvane/commons/Export.h"

namespace orvane::display::graphics {

// Where the rows of a list are, one below the other from zero. Heights are in points. They are all
// equal, or returned by a function, which is called when a row is added and when its place within a
// block of rows is queried: only sums over blocks are kept, about 16 bytes for 256 rows. The
// function must give the same height until the row is changed here. Heights that are less than one
// point or not finite count as one.
class ORVANE_EXPORT RowHeights {
public:
    // Makes all rows equally high.
    void setEqual(double height);
    // Gives each row the height that a function returns for it. The function must not be empty.
    void setFunction(std::function<double(std::size_t row)> heightOf);

    std::size_t count() const { return count_; }
    // Replaces all rows.
    void reset(std::size_t count);
    // `row` is at most count().
    void insert(std::size_t row, std::size_t count);
    // The rows must exist.
    void remove(std::size_t row, std::size_t count);
    // The function gives new heights for these rows, which must exist.
    void change(std::size_t row, std::size_t count);

    // The distance from the beginning of the first row to that of this one; the total for count().
    double offsetOf(std::size_t row) const;
    // The row at a distance from the beginning; the first or the last one if there is none. There
    // must be a row.
    std::size_t rowAt(double offset) const;
    double total() const { return offsetOf(count_); }

private:
    // A row of blocks cannot be split evenly forever: a block has at most twice this many rows.
    static constexpr std::size_t kBlock = 256;

    struct Block {
        std::size_t count = 0;
        double height = 0;
    };
    struct Place {
        std::size_t block = 0;
        std::size_t first = 0;  // the number of rows before the block
        double offset = 0;      // the height of the rows before it
    };

    double heightOf(std::size_t row) const;
    double heightOf(std::size_t row, std::size_t count) const;
    // The block with a row, or the last one for count().
    Place placeOf(std::size_t row) const;
    // Divides a block that has become too large.
    void divide(const Place& place);

    double equal_ = 48;
    std::function<double(std::size_t)> function_;  // empty if the heights are equal
    std::size_t count_ = 0;
    std::vector<Block> blocks_;  // empty if the heights are equal
};

}  // namespace orvane::display::graphics
