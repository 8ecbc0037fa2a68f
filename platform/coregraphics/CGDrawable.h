#pragma once

#include <string>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

struct CairoCanvas;

// What another room of the platform shapes beforehand and paints through the raster library
// itself: a line or a frame of text. Canvases take it in drawLine and drawFrame.
class ORVANE_EXPORT CGDrawable {
public:
    virtual ~CGDrawable() = default;

    // Paints around the point 0, 0 of the user space in force, whose y axis runs up. Called only
    // with a transformation that can be inverted. The canvas restores all graphics state
    // afterwards.
    virtual void paint(CairoCanvas& canvas) const = 0;

    // A box around everything that paint touches, in the same space; what lies outside the clip is
    // not painted at all.
    virtual CGRect inkBounds() const = 0;

    // Content and attributes in a readable form, equal for equal drawables: what a recording
    // canvas keeps.
    virtual std::string description() const = 0;
};

}  // namespace orvane::platform
