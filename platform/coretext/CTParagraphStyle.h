#pragma once

namespace orvane::platform {

// The values are those of the interface. Natural is the side on which the paragraph's script
// begins.
enum class CTTextAlignment { Left = 0, Right = 1, Center = 2, Natural = 4 };

}  // namespace orvane::platform
