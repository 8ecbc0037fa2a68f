#include "platform/offscreen/OffscreenTarget.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <utility>

namespace orvane::platform {

PixmanImage opacityMask(double alpha) {
    if (!(alpha < 1)) {
        return nullptr;
    }
    const pixman_color_t color{0, 0, 0, static_cast<std::uint16_t>(std::lround(alpha * 65535))};
    return PixmanImage(pixman_image_create_solid_fill(&color));
}

OffscreenTarget OffscreenTarget::create(const NSBackingRect& area) {
    OffscreenTarget target;
    target.area = area;
    target.pixels = std::make_shared<std::uint32_t[]>(static_cast<std::size_t>(area.area()));
    target.image =
        wrapPixels(target.pixels.get(), static_cast<int>(area.width()),
                   static_cast<int>(area.height()), static_cast<std::ptrdiff_t>(area.width()));
    return target;
}

Bitmap OffscreenTarget::bitmap() const {
    return {pixels.get(), static_cast<int>(area.width()), static_cast<int>(area.height()),
            static_cast<std::ptrdiff_t>(area.width())};
}

PixelRect OffscreenTarget::toBitmap(const NSBackingRect& rect) const {
    const NSBackingRect own = rect.movedBy(-area.left, -area.top);
    return {static_cast<int>(own.left), static_cast<int>(own.top), static_cast<int>(own.right),
            static_cast<int>(own.bottom)};
}

void OffscreenTarget::movePart(const NSBackingRect& part, std::int64_t dx, std::int64_t dy) {
    const NSBackingRect to = part.intersection(part.movedBy(dx, dy));
    const auto address = [&](std::int64_t x, std::int64_t y) {
        return pixels.get() + (y - area.top) * area.width() + (x - area.left);
    };
    for (std::int64_t i = 0; i < to.height(); ++i) {
        // No row is overwritten before it was read.
        const std::int64_t y = dy > 0 ? to.bottom - 1 - i : to.top + i;
        std::memmove(address(to.left, y), address(to.left - dx, y - dy),
                     static_cast<std::size_t>(to.width()) * sizeof(std::uint32_t));
    }
}

bool OffscreenTarget::moveAll(std::int64_t dx, std::int64_t dy) {
    const auto count = static_cast<std::size_t>(area.area());
    if (!movable) {
        auto copy = std::make_shared<MovablePixels>();
        if (!copy->slide(0, count)) {
            return false;
        }
        std::copy_n(pixels.get(), count, copy->data());
        movable = std::move(copy);
    }
    movable->slide(-(dy * area.width() + dx), count);
    pixels = std::shared_ptr<std::uint32_t[]>(movable, movable->data());
    image = wrapPixels(pixels.get(), static_cast<int>(area.width()),
                       static_cast<int>(area.height()), static_cast<std::ptrdiff_t>(area.width()));
    return true;
}

void OffscreenTarget::draw(const OffscreenTarget& group, pixman_op_t blend, double alpha) {
    const PixmanImage mask = opacityMask(alpha);
    pixman_image_composite32(
        blend, group.image.get(), mask.get(), image.get(), 0, 0, 0, 0,
        static_cast<int>(group.area.left - area.left), static_cast<int>(group.area.top - area.top),
        static_cast<int>(group.area.width()), static_cast<int>(group.area.height()));
}

}  // namespace orvane::platform
