#pragma once

#include "platform/coregraphics/CGContext.h"

namespace orvane::platform {

// Saves the graphics state of a canvas and restores it at the end of the scope, also when painting
// throws. The canvas is borrowed.
class CGSavedState {
public:
    explicit CGSavedState(CGContext& canvas) : canvas_(canvas) { canvas_.saveGState(); }
    ~CGSavedState() { canvas_.restoreGState(); }
    CGSavedState(const CGSavedState&) = delete;
    CGSavedState& operator=(const CGSavedState&) = delete;

private:
    CGContext& canvas_;
};

}  // namespace orvane::platform
