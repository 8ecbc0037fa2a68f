#include "platform/offscreen/OffscreenTarget.h"

#include <cmath>
#include <cstddef>

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

void OffscreenTarget::draw(const OffscreenTarget& group, pixman_op_t blend, double alpha) {
    const PixmanImage mask = opacityMask(alpha);
    pixman_image_composite32(
        blend, group.image.get(), mask.get(), image.get(), 0, 0, 0, 0,
        static_cast<int>(group.area.left - area.left), static_cast<int>(group.area.top - area.top),
        static_cast<int>(group.area.width()), static_cast<int>(group.area.height()));
}

}  // namespace orvane::platform
