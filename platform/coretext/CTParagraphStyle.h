#pragma once

namespace orvane::platform {

// By the interface's numbers. Natural is the side from which the paragraph's script is read.
enum class CTTextAlignment { Left = 0, Right = 1, Center = 2, Natural = 4 };

}  // namespace orvane::platform
