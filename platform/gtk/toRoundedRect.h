#pragma once

#include <gsk/gsk.h>

#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// A rectangle whose corners all have the same radii.
inline GskRoundedRect toRoundedRect(const CGRect& rect, const CGSize& radii) {
    const CGRect r = standardized(rect);
    const graphene_rect_t bounds = {
        {static_cast<float>(r.origin.x), static_cast<float>(r.origin.y)},
        {static_cast<float>(r.size.width), static_cast<float>(r.size.height)}};
    const graphene_size_t corner = {static_cast<float>(radii.width),
                                    static_cast<float>(radii.height)};
    GskRoundedRect result;
    gsk_rounded_rect_init(&result, &bounds, &corner, &corner, &corner, &corner);
    return result;
}

}  // namespace orvane::platform
