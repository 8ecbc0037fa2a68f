#include "platform/raster/Mask.h"

#include <algorithm>
#include <cstring>

namespace orvane::platform {

namespace {

// Returns the end of the run of bytes equal to `value` that begins at `at`.
int runEnd(const std::uint8_t* row, int at, int width, std::uint8_t value) {
    std::uint64_t pattern;
    std::memset(&pattern, value, sizeof pattern);
    while (at + 8 <= width && std::memcmp(row + at, &pattern, 8) == 0) {
        at += 8;
    }
    while (at < width && row[at] == value) {
        ++at;
    }
    return at;
}

// Shorter full runs are stored as bytes: a separate span would cost more than it saves.
constexpr int kShortestFullRun = 4;

}  // namespace

Mask::Mask(const std::uint8_t* coverage, int width, int height, std::ptrdiff_t stride) {
    // Collected in buffers that keep their capacity between masks, then copied at exact size.
    thread_local std::vector<Span> spans;
    thread_local std::vector<std::uint8_t> bytes;
    spans.clear();
    bytes.clear();
    rows_.reserve(static_cast<std::size_t>(height) + 1);
    const auto beginRow = [&] {
        rows_.push_back(
            {static_cast<std::uint16_t>(spans.size()), static_cast<std::uint16_t>(bytes.size())});
    };
    const auto addSpan = [&](int first, int end, bool full) {
        spans.push_back(
            {static_cast<std::uint8_t>(first), static_cast<std::uint8_t>(end - 1), full});
    };
    for (int y = 0; y < height; ++y) {
        const std::uint8_t* row = coverage + y * stride;
        beginRow();
        for (int x = runEnd(row, 0, width, 0); x < width; x = runEnd(row, x, width, 0)) {
            const int start = x;
            int fullEnd = x;
            while (x < width && row[x] != 0) {
                fullEnd = row[x] == 255 ? runEnd(row, x, width, 255) : x;
                if (fullEnd - x >= kShortestFullRun) {
                    break;
                }
                x = std::max(fullEnd, x + 1);
            }
            if (x > start) {
                addSpan(start, x, false);
                bytes.insert(bytes.end(), row + start, row + x);
            }
            if (fullEnd - x >= kShortestFullRun) {
                addSpan(x, fullEnd, true);
                x = fullEnd;
            }
        }
    }
    beginRow();
    spans_ = spans;
    bytes_ = bytes;
}

template <typename Visit>
void Mask::forEachSpan(int row, int left, int right, Visit visit) const {
    const auto index = static_cast<std::size_t>(row);
    const std::uint8_t* bytes = bytes_.data() + rows_[index].byte;
    const Span* const end = spans_.data() + rows_[index + 1].span;
    for (const Span* span = spans_.data() + rows_[index].span; span != end; ++span) {
        const int first = std::max<int>(span->first, left);
        const int last = std::min<int>(span->last + 1, right);
        if (first < last) {
            visit(first, last, span->full ? nullptr : bytes + (first - span->first));
        }
        if (!span->full) {
            bytes += span->last - span->first + 1;
        }
    }
}

void Mask::paint(const Bitmap& bitmap, int left, int top, const PixelRect& clip,
                 std::uint32_t color) const {
    for (int y = clip.top; y < clip.bottom; ++y) {
        std::uint32_t* row = bitmap.at(0, y);
        forEachSpan(y - top, clip.left - left, clip.right - left,
                    [&](int first, int end, const std::uint8_t* bytes) {
                        if (bytes == nullptr) {
                            blendSolid(row + left + first, end - first, color);
                        } else {
                            blendCoverage(row + left + first, bytes, end - first, color);
                        }
                    });
    }
}

void Mask::multiply(std::uint8_t* coverage, int left, int top, const PixelRect& area) const {
    for (int y = area.top; y < area.bottom; ++y, coverage += kSide) {
        const int origin = area.left - left;
        int done = origin;
        forEachSpan(
            y - top, origin, area.right - left, [&](int first, int end, const std::uint8_t* bytes) {
                std::memset(coverage + (done - origin), 0, static_cast<std::size_t>(first - done));
                done = end;
                if (bytes != nullptr) {
                    for (int x = first; x < end; ++x) {
                        std::uint8_t& value = coverage[x - origin];
                        value = static_cast<std::uint8_t>(scaled(value, bytes[x - first]));
                    }
                }
            });
        std::memset(coverage + (done - origin), 0,
                    static_cast<std::size_t>(area.right - left - done));
    }
}

void Mask::clearOutside(std::uint8_t* coverage, const PixelRect& area, const PixelRect& inside) {
    for (int y = area.top; y < area.bottom; ++y) {
        std::uint8_t* row = coverage + (y - area.top) * kSide;
        if (inside.isEmpty() || y < inside.top || y >= inside.bottom) {
            std::fill_n(row, area.width(), std::uint8_t{0});
        } else {
            std::fill(row, row + (inside.left - area.left), std::uint8_t{0});
            std::fill(row + (inside.right - area.left), row + area.width(), std::uint8_t{0});
        }
    }
}

std::size_t Mask::byteCount() const {
    return rows_.capacity() * sizeof(Row) + spans_.capacity() * sizeof(Span) + bytes_.capacity();
}

}  // namespace orvane::platform
