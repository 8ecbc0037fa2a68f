#include "orvane/display/native/clipGuest.h"

#include <array>
#include <memory>
#include <vector>

#include "orvane/display/graphics/ClipContainer.h"
#include "orvane/display/tree/LayerPlacement.h"
#include "platform/coregraphics/CGContext.h"
#include "platform/coregraphics/CGPath.h"

namespace orvane::display::native {

using platform::CGAffineTransform;
using platform::CGPoint;
using platform::CGRect;

void clipGuest(platform::CGContext& canvas, const DisplayObject& guest, const DisplayLayer& layer,
               const ContainerObject* common) {
    for (ContainerObject* const container :
         LayerPlacement::clipContainersAround(guest, layer, common)) {
        auto* const clipping = dynamic_cast<graphics::ClipContainer*>(container);
        if (clipping == nullptr) {
            continue;
        }
        // The bounds are in the coordinates of the container's parent.
        const std::shared_ptr<ContainerObject> parent = container->getParent();
        const CGAffineTransform toScreen(parent ? parent->getFullTransformation()
                                                : geometry::Matrix());
        const CGRect bounds(clipping->getBounds());
        if (toScreen.b == 0 && toScreen.c == 0) {
            canvas.clipToRect(toScreen.apply(bounds));
            continue;
        }
        const auto [x, y] = bounds.origin;
        const double right = x + bounds.size.width;
        const double bottom = y + bounds.size.height;
        platform::CGPath path;
        path.addLines(std::array{toScreen.apply(CGPoint{x, y}), toScreen.apply(CGPoint{right, y}),
                                 toScreen.apply(CGPoint{right, bottom}),
                                 toScreen.apply(CGPoint{x, bottom})});
        path.closeSubpath();
        canvas.addPath(path);
        canvas.clip();
    }
}

}  // namespace orvane::display::native
