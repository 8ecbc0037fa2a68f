#pragma once

#include <sstream>
#include <string>

#include "orvane/display/native/CurrentCanvas.h"
#include "orvane/display/tree/DisplayObject.h"
#include "platform/coregraphics/CGRecordingContext.h"

namespace orvane::display {

inline void paintOn(platform::CGContext& canvas, DisplayObject& object,
                    const geometry::Rect<double>& rect) {
    SetCurrentCanvas(&canvas);
    object.validate(rect);
    SetCurrentCanvas(nullptr);
}

// The calls that an object makes on its canvas in a pass over everything, one a line.
inline std::string painted(DisplayObject& object) {
    platform::CGRecordingContext canvas;
    paintOn(canvas, object, {-1e6, -1e6, 2e6, 2e6});
    std::ostringstream text;
    for (const auto& call : canvas.calls()) {
        text << call << '\n';
    }
    return text.str();
}

}  // namespace orvane::display
