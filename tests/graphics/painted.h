#pragma once

#include <sstream>
#include <string>

#include "orvane/display/native/CurrentCanvas.h"
#include "orvane/display/tree/DisplayObject.h"
#include "platform/coregraphics/CGRecordingContext.h"

namespace orvane::display {

// Paints the part of an object inside `rect` on a canvas.
inline void paintOn(platform::CGContext& canvas, DisplayObject& object,
                    const geometry::Rect<double>& rect) {
    SetCurrentCanvas(&canvas);
    object.validate(rect);
    SetCurrentCanvas(nullptr);
}

// Returns the canvas calls of an object in a paint pass over everything, one per line.
inline std::string painted(DisplayObject& object, int precision = 6) {
    platform::CGRecordingContext canvas;
    paintOn(canvas, object, {-1e6, -1e6, 2e6, 2e6});
    std::ostringstream text;
    text.precision(precision);
    for (const auto& call : canvas.calls()) {
        text << call << '\n';
    }
    return text.str();
}

}  // namespace orvane::display
