#pragma once

#include <string>

namespace orvane::host {

// Shows a text on the display: the first line as a headline, the last lines of the rest below it.
void showMessage(const std::string& text);

}  // namespace orvane::host
