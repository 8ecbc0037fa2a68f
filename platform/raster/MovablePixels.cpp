#include "platform/raster/MovablePixels.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace orvane::platform {

namespace {

constexpr std::size_t kPixel = sizeof(std::uint32_t);

// Maps the file at an address that is reserved already.
bool mapAt(void* address, std::size_t bytes, int file) {
    return mmap(address, bytes, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED, file, 0) !=
           MAP_FAILED;
}

// Returns `bytes` of memory, a multiple of the page size, mapped twice in a row; null if that
// failed.
void* mapTwice(std::size_t bytes) {
    const int file = memfd_create("pixels", MFD_CLOEXEC);
    if (file < 0) {
        return nullptr;
    }
    void* address = MAP_FAILED;
    if (ftruncate(file, static_cast<off_t>(bytes)) == 0) {
        address = mmap(nullptr, 2 * bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    }
    if (address != MAP_FAILED &&
        !(mapAt(address, bytes, file) && mapAt(static_cast<char*>(address) + bytes, bytes, file))) {
        munmap(address, 2 * bytes);
        address = MAP_FAILED;
    }
    close(file);  // the mappings keep the memory
    return address != MAP_FAILED ? address : nullptr;
}

}  // namespace

void MovablePixels::Free::operator()(std::uint32_t* pixels) const {
    std::free(pixels);
}

MovablePixels::~MovablePixels() {
    unmap();
}

MovablePixels::MovablePixels(MovablePixels&& other) noexcept {
    *this = std::move(other);
}

MovablePixels& MovablePixels::operator=(MovablePixels&& other) noexcept {
    std::swap(plain_, other.plain_);
    std::swap(ring_, other.ring_);
    std::swap(capacity_, other.capacity_);
    std::swap(data_, other.data_);
    std::swap(count_, other.count_);
    return *this;
}

void MovablePixels::unmap() {
    if (ring_ != nullptr) {
        munmap(ring_, 2 * capacity_ * kPixel);
    }
    ring_ = nullptr;
    capacity_ = 0;
}

bool MovablePixels::allocate(std::size_t count) {
    unmap();
    // Large memory comes from the system, which clears it when it is first touched.
    plain_.reset(static_cast<std::uint32_t*>(std::calloc(count, kPixel)));
    data_ = plain_.get();
    count_ = data_ != nullptr ? count : 0;
    return data_ != nullptr;
}

bool MovablePixels::slide(std::ptrdiff_t distance, std::size_t count) {
    if (count <= capacity_) {
        const auto size = static_cast<std::ptrdiff_t>(capacity_);
        const std::ptrdiff_t start = (data_ - ring_ + distance) % size;
        data_ = ring_ + (start < 0 ? start + size : start);
        count_ = count;
        return true;
    }
    MovablePixels moved;
    if (!moved.mapAround(count)) {
        return false;
    }
    // What is in both, in places of the new pixels.
    const std::ptrdiff_t first = std::max<std::ptrdiff_t>(-distance, 0);
    const std::ptrdiff_t end = std::min(static_cast<std::ptrdiff_t>(count),
                                        static_cast<std::ptrdiff_t>(count_) - distance);
    if (first < end) {
        std::copy_n(data_ + first + distance, end - first, moved.data_ + first);
    }
    *this = std::move(moved);
    return true;
}

// Maps memory for so many pixels, and for the few more that a picture of changing height has.
bool MovablePixels::mapAround(std::size_t count) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t bytes = (count + count / 4) * kPixel / page * page + page;
    ring_ = static_cast<std::uint32_t*>(mapTwice(bytes));
    capacity_ = ring_ != nullptr ? bytes / kPixel : 0;
    data_ = ring_;
    count_ = ring_ != nullptr ? count : 0;
    return ring_ != nullptr;
}

}  // namespace orvane::platform
