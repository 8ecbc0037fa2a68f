#pragma once

#include <string>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

struct CairoCanvas;

// Content that another module lays out in advance and paints through Cairo: a line or a frame of
// text. A canvas draws it in drawLine and drawFrame.
class ORVANE_EXPORT CGDrawable {
public:
    virtual ~CGDrawable() = default;

    // Paints with its origin at the point (0, 0) of the current user space, whose y axis is up.
    // Called only under a transformation that can be inverted. The canvas restores the graphics
    // state afterwards.
    virtual void paint(CairoCanvas& canvas) const = 0;

    // A rectangle around everything that paint() touches, in the same space. Content outside the
    // clip is not painted.
    virtual CGRect inkBounds() const = 0;

    // The content and its attributes as readable text, equal for equal drawables. A recording
    // canvas stores it.
    virtual std::string description() const = 0;
};

}  // namespace orvane::platform
