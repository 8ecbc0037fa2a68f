#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "orvane/display/CurrentCanvas.h"
#include "orvane/display/DisplayObject.h"
#include "platform/coregraphics/CGRecordingContext.h"

namespace orvane::display {

// One line a call.
using Calls = std::vector<std::string>;

// What the object calls on its canvas in a pass over `dirty`.
inline Calls paint(DisplayObject& object,
                   const geometry::Rect<double>& dirty = {-1000, -1000, 3000, 3000}) {
    platform::CGRecordingContext canvas;
    SetCurrentCanvas(&canvas);
    object.validate(dirty);
    SetCurrentCanvas(nullptr);
    Calls calls;
    for (const auto& call : canvas.calls()) {
        std::ostringstream text;
        text << call;
        calls.push_back(text.str());
    }
    return calls;
}

// The outline of the last path that the object puts on its canvas.
inline std::string outline(DisplayObject& object) {
    const std::string name = "addPath(";
    std::string result = "none";
    for (const std::string& call : paint(object)) {
        if (call.starts_with(name)) {
            result = call.substr(name.size(), call.size() - name.size() - 1);
        }
    }
    return result;
}

}  // namespace orvane::display
