#include "orvane/display/native/clipsOfLayer.h"

#include <algorithm>
#include <memory>

#include "orvane/display/graphics/ClipContainer.h"
#include "orvane/display/tree/DisplayLayer.h"
#include "orvane/display/tree/LayerPlacement.h"

namespace orvane::display::native {

namespace {

using platform::CGAffineTransform;
using platform::CGRect;
using platform::NSViewClip;

bool keepsAxes(const CGAffineTransform& t) {
    return (t.b == 0 && t.c == 0) || (t.a == 0 && t.d == 0);
}

CGRect commonPart(const CGRect& a, const CGRect& b) {
    CGRect result = intersection(a, b);
    result.size.width = std::max(result.size.width, 0.0);
    result.size.height = std::max(result.size.height, 0.0);
    return result;
}

}  // namespace

std::vector<NSViewClip> clipsOfLayer(const DisplayLayer& layer) {
    std::vector<NSViewClip> clips;
    bool firstIsParallel = false;
    for (ContainerObject* const container : LayerPlacement::clipContainersOf(layer)) {
        auto* const clipping = dynamic_cast<graphics::ClipContainer*>(container);
        if (clipping == nullptr) {
            continue;
        }
        // The bounds are in the coordinates of the container's parent.
        const std::shared_ptr<ContainerObject> parent = container->getParent();
        const auto [x, y] = layer.getSuperlayer()->getLayerFrame().position();
        const CGAffineTransform toSuperview =
            CGAffineTransform(parent ? parent->getFullTransformation() : geometry::Matrix())
                .concat(CGAffineTransform::makeTranslation(-x, -y));
        const CGRect bounds(clipping->getBounds());
        if (clipping->getCornerRadius() > 0) {
            clips.push_back({bounds, toSuperview, clipping->getCornerRadius()});
            continue;
        }
        if (!keepsAxes(toSuperview) || !toSuperview.isDrawable() || !isFinite(bounds)) {
            clips.push_back({bounds, toSuperview});
            continue;
        }
        const CGRect rect = toSuperview.apply(standardized(bounds));
        if (firstIsParallel) {
            clips.front().rect = commonPart(clips.front().rect, rect);
        } else {
            clips.insert(clips.begin(), {rect, {}});
            firstIsParallel = true;
        }
    }
    return clips;
}

}  // namespace orvane::display::native
