#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace orvane::platform {

// Pixels in one piece of memory, which can be moved without copying them: the memory is mapped
// twice, one mapping directly after the other, so what leaves at one end makes room at the other.
//
// To move a picture with rows of w pixels by x to the left and y up is to slide by y * w + x: every
// pixel that stays in the picture keeps its address. The second mapping is made by the first slide;
// pixels that never move are ordinary memory.
class MovablePixels {
public:
    MovablePixels() = default;
    ~MovablePixels();
    MovablePixels(const MovablePixels&) = delete;
    MovablePixels& operator=(const MovablePixels&) = delete;
    MovablePixels(MovablePixels&& other) noexcept;
    MovablePixels& operator=(MovablePixels&& other) noexcept;

    // Replaces the pixels by `count` transparent ones. Returns false, and has none, if there is not
    // enough memory.
    bool allocate(std::size_t count);
    // Makes the pixels begin `distance` later than before (if it is negative: earlier), and be
    // `count`. The values of pixels that were not there before are undefined. Returns false, and
    // changes nothing, if the memory cannot be mapped.
    bool slide(std::ptrdiff_t distance, std::size_t count);

    // The first pixel, and the number of pixels; null and zero at first. A slide changes both.
    std::uint32_t* data() const { return data_; }
    std::size_t count() const { return count_; }

private:
    struct Free {
        void operator()(std::uint32_t* pixels) const;
    };
    bool mapAround(std::size_t count);
    void unmap();

    std::unique_ptr<std::uint32_t[], Free> plain_;  // null once the memory is mapped twice
    std::uint32_t* ring_ = nullptr;                 // the first of the two mappings
    std::size_t capacity_ = 0;                      // the pixels of one mapping
    std::uint32_t* data_ = nullptr;
    std::size_t count_ = 0;
};

}  // namespace orvane::platform
