#pragma once

#include <vector>

#include "platform/gtk/GTKWindow.h"

namespace orvane::display {
class Display;
}

namespace orvane::host {

// The labels of the visible objects on a display, with their frames, in drawing order.
std::vector<platform::GTKWindow::Label> accessibilityLabels(const display::Display& display);

}  // namespace orvane::host
