#include "orvane/display/native/CurrentCanvas.h"

namespace orvane::display {

namespace {
thread_local platform::CGContext* currentCanvas = nullptr;
}

platform::CGContext* GetCurrentCanvas() {
    return currentCanvas;
}

void SetCurrentCanvas(platform::CGContext* canvas) {
    currentCanvas = canvas;
}

}  // namespace orvane::display
